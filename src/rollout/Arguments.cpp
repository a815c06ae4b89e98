#include "rollout/Arguments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "common/Error.h"
#include "platform/Regional.h"

namespace {

struct CommandForm {
    TextView option;  // the option in uppercase; empty for the command without an option
    Command command;
    std::size_t least, most;  // minimum and maximum number of arguments other than options
    TextView usage;
};

constexpr std::array<CommandForm, 4> Forms = {{
    {u"", Command::Check, 1, 3, u"Geben Sie eine Steuerungs-Datei an und höchstens ein Ziel und eine frühere Datei."},
    {u"/EXPORT", Command::Export, 1, 1, u"/export verlangt genau eine Datei."},
    {u"/IMPORT", Command::Import, 1, 1, u"/import verlangt genau eine Datei."},
    {u"/WER", Command::Who, 1, 2, u"/wer verlangt einen Benutzer und höchstens eine Steuerungs-Datei."},
}};

[[noreturn]] void RaiseUsage(const Text& problem) {
    Raise(RuntimeError::InvalidArgument, problem + u" Hilfe: vtv4v-reg /?");
}

// True for an option such as "/wer". An argument with a second slash or a dot is a host path.
bool IsOption(const Text& argument) {
    return argument.starts_with(u'-') || (argument.starts_with(u'/') && argument.find_first_of(u"/.", 1) == Text::npos);
}

// The command-line arguments, grouped by kind.
struct SortedArguments {
    const CommandForm* form = &Forms[0];
    std::optional<Text> domain, dnsDomain;
    std::vector<Text> others;
};

SortedArguments Sorted(const std::vector<Text>& arguments) {
    SortedArguments sorted;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const Text& argument = arguments[index];
        const Text option = platform::CharUpperW(argument);
        const auto* const form = std::ranges::find(Forms, TextView(option), &CommandForm::option);
        if (!IsOption(argument)) {
            sorted.others.push_back(argument);
        } else if (form != Forms.end() && sorted.form == &Forms[0]) {
            sorted.form = form;
        } else if ((option == u"/DOMAENE" || option == u"/DNS") && index + 1 < arguments.size()) {
            (option == u"/DNS" ? sorted.dnsDomain : sorted.domain) = arguments[++index];
        } else {
            RaiseUsage(u"Die Option »" + argument + u"« ist unbekannt, unvollständig oder überzählig.");
        }
    }
    return sorted;
}

// Splits a user name. Accepts "hugo", "OFFICE.hugo", "OFFICE\hugo" and "office.example.hugo"; ".hugo" means an empty
// DNS domain. Parts not given come from the options or the environment. A user name that contains a dot is recognised
// only with an explicit domain, or if it is the current user's.
UserNames NamesOf(const Text& given, const SortedArguments& sorted) {
    UserNames user = CurrentUserNames();
    const bool isCurrentUser = platform::CharUpperW(given) == platform::CharUpperW(user.name);
    user = {given, sorted.dnsDomain.value_or(user.dnsDomain), sorted.domain.value_or(user.domain)};
    const Text dnsPrefix = user.dnsDomain + u".";
    const std::size_t dot = given.find_first_of(u".\\");
    if (sorted.domain || isCurrentUser || dot == Text::npos) {
        return user;
    }
    if (platform::CharUpperW(given).starts_with(platform::CharUpperW(dnsPrefix))) {
        user.name = given.substr(dnsPrefix.size());
    } else {
        (dot == 0 ? user.dnsDomain : user.domain) = given.substr(0, dot);
        user.name = given.substr(dot + 1);
    }
    return user;
}

}  // namespace

bool IsXmlPath(const Text& path) {
    return platform::CharUpperW(path).ends_with(u".XML");
}

Arguments ParseArguments(const std::vector<Text>& arguments) {
    if (std::ranges::find(arguments, u"/?") != arguments.end()) {
        return {};
    }
    for (const Text& argument : arguments) {
        if (platform::TextFromAnsi(platform::AnsiFromText(argument)) != argument) {
            RaiseUsage(u"»" + argument + u"« enthält Zeichen, die es in der ANSI-Codepage nicht gibt.");
        }
    }
    const SortedArguments sorted = Sorted(arguments);
    std::vector<Text> others = sorted.others;
    Arguments parsed{sorted.form->command, {}, {}, {}, {}};
    const bool isWho = parsed.command == Command::Who;
    if (others.size() < sorted.form->least || others.size() > sorted.form->most) {
        RaiseUsage(Text(sorted.form->usage));
    }
    if (isWho) {
        parsed.user = NamesOf(others[0], sorted);
    } else if (sorted.domain || sorted.dnsDomain) {
        RaiseUsage(u"/domaene und /dns gelten nur für /wer.");
    }
    if (std::ranges::find(others, Text()) != others.end() || (isWho && parsed.user.name.empty())) {
        RaiseUsage(u"Ein Datei- oder Benutzername ist leer.");
    }
    others.resize(3);
    parsed.controlFile = others[isWho ? 1 : 0];
    parsed.target = isWho ? Text() : others[1];
    parsed.earlierFile = others[2];
    if (!parsed.target.empty() && !IsXmlPath(parsed.target) &&
        !platform::CharUpperW(parsed.target).ends_with(u".REG")) {
        RaiseUsage(u"»" + parsed.target + u"«: Das Ziel muss auf .reg oder .xml enden.");
    }
    if (!parsed.earlierFile.empty() && !IsXmlPath(parsed.target)) {
        RaiseUsage(u"Eine frühere Steuerungs-Datei ist nur möglich, wenn das Ziel auf .xml endet.");
    }
    return parsed;
}
