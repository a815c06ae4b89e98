#include "settings/IniFile4.h"

#include <memory>
#include <optional>
#include <utility>

#include "common/Error.h"
#include "common/TextFile.h"
#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

namespace {

// The item name under which a section stores its heading.
constexpr char16_t HeadingName[] = u"_";

Text ItemKey(const Text& name) {
    return u"KEY" + name;
}

// Returns the part of a line after `position`. Lines of up to 32767 characters are valid, but MidFixed would raise an
// overflow for the longest ones, because it adds position and length.
Text TextAfter(const Text& line, std::int16_t position) {
    return line.substr(static_cast<std::size_t>(position));
}

// Returns what Stream shows of a heading: the text after the first ";", or the whole heading if there is none.
Text HeadingText(const Text& line) {
    return TextAfter(line, FindAnyChar(line, u";"));
}

void StreamLine(Text& streamText, const Text& line) {
    if (!streamText.empty()) {
        streamText += u"\r\n";
    }
    streamText += line;
}

void StreamSection(Text& streamText, const IniSection& section) {
    StreamLine(streamText, HeadingText(section.First()));
    for (const auto& [key, line] : section) {
        if (!line.starts_with(u'[')) {
            StreamLine(streamText, line);
        }
    }
    StreamLine(streamText, {});
}

}  // namespace

void IniFile4::Sections(std::shared_ptr<IniSections> sections) {
    Clear();
    if (sections != nullptr) {
        sections_ = std::move(sections);
    }
}

void IniFile4::FilePath(const Text& thisFilePath) {
    filePath_ = thisFilePath;
    ReadFile(thisFilePath);
}

void IniFile4::Clear() {
    sections_ = std::make_shared<IniSections>();
}

void IniFile4::ReadFile(const Text& thisFilePath) {
    Clear();
    if (!thisFilePath.empty()) {
        filePath_ = thisFilePath;
    }
    if (filePath_.empty()) {
        return;
    }
    TrapError([this] {
        TextFileReader readStream(filePath_);
        while (!readStream.AtEnd()) {
            ParseLine(readStream.ReadLine());
        }
    });
}

void IniFile4::ParseLine(const Text& fileLine) {
    const Text line = Trim(fileLine);
    if (line.starts_with(u'[')) {
        if (const std::int16_t bracket = FindAnyChar(line, u"]"); bracket != 0) {
            readSection_ = MidFixed(line, 2, static_cast<std::int16_t>(bracket - 2));
            Section(readSection_);
        }
        return;
    }
    if (line.empty() || readSection_.empty()) {
        return;
    }
    if (const std::int16_t equals = FindAnyChar(line, u"="); equals > 1) {
        Value(readSection_, MidFixed(line, 1, static_cast<std::int16_t>(equals - 1)), TextAfter(line, equals));
    }
}

void IniFile4::Section(const Text& thisName) {
    TrapError([&] {
        if (sections_->Find(ItemKey(thisName)) == nullptr) {
            IniSection section;
            section.Add(ItemKey(HeadingName), u"[" + thisName + u"]");
            sections_->Add(ItemKey(thisName), std::move(section));
        }
    });
}

void IniFile4::Value(const Text& thisSection, const Text& thisName, const Text& thisValue) {
    const Text line = thisValue.empty() ? thisName : thisName + u"=" + thisValue;
    Section(thisSection);
    TrapError([&] {
        if (IniSection* const section = sections_->Find(ItemKey(thisSection))) {
            section->Remove(ItemKey(thisName));
            section->Add(ItemKey(thisName), line);
        }
    });
}

Text IniFile4::Value(const Text& thisSection, const Text& thisName) const {
    const Text line = ValueFull(thisSection, thisName);
    const std::int16_t equals = FindAnyChar(line, u"=");
    return equals == 0 || static_cast<std::size_t>(equals) == line.size() ? line : TextAfter(line, equals);
}

Text IniFile4::ValueFull(const Text& thisSection, const Text& thisName) const {
    IniSection* const section = sections_->Find(ItemKey(thisSection));
    const Text* const line = section == nullptr ? nullptr : section->Find(ItemKey(thisName));
    return line == nullptr ? Text() : *line;
}

void IniFile4::WriteFile(const Text& thisFilePath, bool thisOverwite) {
    if (!thisFilePath.empty()) {
        filePath_ = thisFilePath;
    }
    if (filePath_.empty() || sections_->IsEmpty()) {
        return;
    }
    WriteTextFile(filePath_, Stream(), thisOverwite);
}

Text IniFile4::Stream() const {
    Text streamText;
    if (sections_->IsEmpty()) {
        return streamText;
    }
    const std::optional<Error> error = TrapError([&] {
        for (const auto& [key, section] : *sections_) {
            StreamSection(streamText, section);
        }
    });
    if (error) {
        StreamLine(streamText, error->description);
    }
    return streamText;
}

void IniFile4::Delete() const {
    if (!filePath_.empty()) {
        platform::DeleteFileA(platform::AnsiFromText(filePath_));
    }
}

bool IniFile4::Exists() const {
    return !filePath_.empty() && platform::IsFile(platform::AnsiFromText(filePath_));
}
