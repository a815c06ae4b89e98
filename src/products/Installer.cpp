#include "products/Installer.h"

#include "common/Conversion.h"
#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/WindowSystem.h"
#include "products/modShellExec.h"

namespace {

constexpr std::size_t ListCapacity = 1000;

constexpr TextView UnInstallRoot = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\UnInstall";
// The installer keeps what it installed for all users under the identity of the system's own account.
constexpr TextView InstallerRoot =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Installer\\UserData\\S-1-5-18\\Products";
constexpr TextView InstallerSubKey = u"\\InstallProperties";

// What stands in the first braces of an uninstall string, without a look at its form.
Text ExtractGUI(const Text& unInstallString) {
    if (unInstallString.empty()) {
        return {};
    }
    const std::int16_t opening = FindAnyChar(unInstallString, u"{");
    const Text behind = MidFixed(unInstallString, static_cast<std::int16_t>(opening + 1));
    const std::int16_t closing = FindAnyChar(behind, u"}");
    return MidFixed(behind, 1, static_cast<std::int16_t>(closing - 1));
}

}  // namespace

void Installer::DisplayName(const Text& thisDisplayName) {
    FindProduct(thisDisplayName, false);
}

void Installer::GUI(const Text& thisGUI) {
    FindProduct(thisGUI, true);
}

std::int16_t Installer::VersionMajor() const {
    return static_cast<std::int8_t>(record_.version >> 24);
}

std::int16_t Installer::VersionMinor() const {
    return static_cast<std::uint8_t>(record_.version >> 16);
}

std::int16_t Installer::VersionRevision() const {
    return static_cast<std::int16_t>(record_.version % 512);
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
    // A copy, because the record is cleared before it is filled again.
    const Text gui = record_.gui;
    FindProduct(gui, true);
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
    ScanProducts({}, false, userMode);
}

void Installer::FindProduct(const Text& match, bool byGUI) {
    ClearRecord();
    if (!match.empty()) {
        ScanProducts(match, byGUI, false);
    }
}

// The one walk behind every lookup and, with an empty `match`, behind the list.
void Installer::ScanProducts(const Text& match, bool byGUI, bool userMode) {
    const Text root(userMode ? InstallerRoot : UnInstallRoot);
    const TextView below = userMode ? InstallerSubKey : TextView();
    Registry products;
    const KeyCloser closer(products);
    TrapError([&] {
        products.KeyOpenLocalMachine(root);
        for (products.SubKeyFirst(); !products.EOF_SubKey(); products.SubKeyNext()) {
            Text path = root;
            ReadRecord(path.append(u"\\").append(products.SubKey()).append(below));
            if (EndsWalk(match, byGUI)) {
                return;
            }
            platform::DoEvents();
        }
    });
}

// Each field on its own: one that is missing, or that does not convert, stays empty.
void Installer::ReadRecord(const Text& path) {
    ClearRecord();
    Registry product;
    const KeyCloser closer(product);
    IgnoreErrors([&] { product.KeyOpenLocalMachine(path); },
                 [&] { record_.displayName = TextFrom(product.Value(u"DisplayName")); },
                 [&] { record_.unInstallString = TextFrom(product.Value(u"UnInstallString")); },
                 [&] { record_.gui = ExtractGUI(record_.unInstallString); },
                 [&] { record_.version = LongFrom(product.Value(u"Version")); },
                 [&] { record_.installLocation = TextFrom(product.Value(u"InstallLocation")); });
}

bool Installer::EndsWalk(const Text& match, bool byGUI) {
    if (match.empty()) {
        if (IsEntry()) {
            ListAdd();
        }
        return false;
    }
    if (IsEntry() && match == (byGUI ? record_.gui : record_.displayName)) {
        return true;
    }
    ClearRecord();
    return false;
}

void Installer::ListAdd() {
    ++count_;
    if (list_.size() < ListCapacity) {
        list_.push_back(record_);
    }
}

template <typename Field>
Field Installer::ListEntry(Field Record::*field, std::int32_t index) const {
    if (index < 1 || index > count_) {
        return {};
    }
    const auto place = static_cast<std::size_t>(index - 1);
    if (place >= list_.size()) {
        Raise(RuntimeError::SubscriptOutOfRange);
    }
    return list_[place].*field;
}

Text Installer::DisplayNames(std::int32_t index) const {
    return ListEntry(&Record::displayName, index);
}

Text Installer::UnInstallStrings(std::int32_t index) const {
    return ListEntry(&Record::unInstallString, index);
}

Text Installer::GUIs(std::int32_t index) const {
    return ListEntry(&Record::gui, index);
}

std::int32_t Installer::Versions(std::int32_t index) const {
    return ListEntry(&Record::version, index);
}

Text Installer::InstallLocations(std::int32_t index) const {
    return ListEntry(&Record::installLocation, index);
}
