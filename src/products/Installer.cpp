#include "products/Installer.h"

#include "common/Conversion.h"
#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/ScopeExit.h"
#include "platform/WindowSystem.h"
#include "products/modShellExec.h"

namespace {

constexpr std::size_t ListCapacity = 1000;

constexpr char16_t UnInstallRoot[] = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\UnInstall";
// S-1-5-18 is the SYSTEM account, under which Windows Installer registers per-machine installs.
constexpr char16_t InstallerRoot[] =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Installer\\UserData\\S-1-5-18\\Products";
constexpr char16_t InstallerSubKey[] = u"\\InstallProperties";

// Returns the text between the first pair of braces in an uninstall string, without validating it.
Text ExtractGUI(const Text& unInstallString) {
    if (unInstallString.empty()) {
        return {};
    }
    const std::int16_t opening = FindAnyChar(unInstallString, u"{");
    const Text rest = MidFixed(unInstallString, static_cast<std::int16_t>(opening + 1));
    const std::int16_t closing = FindAnyChar(rest, u"}");
    return MidFixed(rest, 1, static_cast<std::int16_t>(closing - 1));
}

}  // namespace

void Installer::DisplayName(const Text& thisDisplayName) {
    FindProduct(thisDisplayName, &Record::displayName);
}

void Installer::GUI(const Text& thisGUI) {
    FindProduct(thisGUI, &Record::gui);
}

Text Installer::DisplayVersion(bool fancy, bool noPoints) const {
    if (record_.version == 0) {
        return {};
    }
    const Text separator = noPoints ? u"" : u".";
    const Text major = fancy ? ZeroPadInteger(VersionMajor(), 2) : DecimalText(VersionMajor());
    return major + separator + ZeroPadInteger(VersionMinor(), 2) + separator + ZeroPadInteger(VersionRevision(), 3);
}

Text Installer::DisplayVersions(std::int32_t index, bool fancy, bool noPoints) {
    if (index < 1 || index > count_) {
        return {};
    }
    record_.version = Versions(index);
    return DisplayVersion(fancy, noPoints);
}

void Installer::ReScan() {
    const Text gui = record_.gui;  // a copy, because FindProduct clears the record first
    FindProduct(gui, &Record::gui);
}

void Installer::UnInstall(bool quiet) {
    if (record_.gui.empty()) {
        return;
    }
    const Text switches = quiet ? u"/quiet " : u"";
    ShellAndWait(u"MsiExec.exe " + switches + u"/x" + GUIdeco());
    ReScan();
}

void Installer::List(bool userMode) {
    count_ = 0;
    list_.clear();
    VisitProducts(userMode, [this](const Record& record) {
        record_ = record;
        if (record.IsEntry()) {
            ++count_;
            if (list_.size() < ListCapacity) {
                list_.push_back(record);
            }
        }
        return false;
    });
}

void Installer::FindProduct(const Text& match, Text Record::*field) {
    record_ = {};
    if (match.empty()) {
        return;
    }
    VisitProducts(false, [&](const Record& record) {
        const bool found = record.IsEntry() && record.*field == match;
        if (found) {
            record_ = record;
        }
        return found;
    });
}

// Reads the products one by one until `visit` returns true.
void Installer::VisitProducts(bool userMode, const std::function<bool(const Record&)>& visit) {
    const Text root = userMode ? InstallerRoot : UnInstallRoot;
    const TextView suffix = userMode ? InstallerSubKey : u"";
    Registry products;
    const platform::ScopeExit close([&] { products.KeyClose(); });
    TrapError([&] {
        products.KeyOpenLocalMachine(root);
        for (products.SubKeyFirst(); !products.EOF_SubKey(); products.SubKeyNext()) {
            Text path = root;
            if (visit(ReadRecord(path.append(u"\\").append(products.SubKey()).append(suffix)))) {
                return;
            }
            platform::DoEvents();
        }
    });
}

// A field that is missing or doesn't convert stays empty; the others are still read.
Installer::Record Installer::ReadRecord(const Text& path) {
    Record record;
    Registry product;
    const platform::ScopeExit close([&] { product.KeyClose(); });
    IgnoreErrors([&] { product.KeyOpenLocalMachine(path); },
                 [&] { record.displayName = TextFrom(product.Value(u"DisplayName")); },
                 [&] { record.unInstallString = TextFrom(product.Value(u"UnInstallString")); },
                 [&] { record.gui = ExtractGUI(record.unInstallString); },
                 [&] { record.version = LongFrom(product.Value(u"Version")); },
                 [&] { record.installLocation = TextFrom(product.Value(u"InstallLocation")); });
    return record;
}

Installer::Record Installer::ListEntry(std::int32_t index) const {
    if (index < 1 || index > count_) {
        return {};
    }
    if (static_cast<std::size_t>(index) > list_.size()) {
        Raise(RuntimeError::SubscriptOutOfRange);
    }
    return list_[static_cast<std::size_t>(index - 1)];
}
