#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "common/Text.h"
#include "settings/Registry.h"

// Finds installed products in the local machine's registry. Holds two independent results: the record of the current
// product, found by setting DisplayName or GUI, and the product list, filled by List. Ignores entries that lack a
// display name or have no GUID in the first pair of braces of their uninstall string. Names and GUIDs must match
// exactly, including case.
//
// Registry errors aren't raised: a product that can't be read isn't found, and a field that can't be read is empty.
// While products are read from the registry, pending window messages are processed after each one.
class Installer {
public:
    // Finds the first product with this display name. If there is none, clears the record.
    void DisplayName(const Text& thisDisplayName);
    [[nodiscard]] Text DisplayName() const { return record_.displayName; }
    // Like DisplayName, but finds the product by its GUID, which is passed without braces.
    void GUI(const Text& thisGUI);
    [[nodiscard]] Text GUI() const { return record_.gui; }
    // Returns the GUID in braces.
    [[nodiscard]] Text GUIdeco() const { return u"{" + record_.gui + u"}"; }

    // Returns the stored version, or 0 if it is unknown. The highest byte is the major version (-128 to 127), the next
    // byte the minor version (0 to 255), and the lowest 9 bits the revision (-511 to 511, with the sign of Version).
    [[nodiscard]] std::int32_t Version() const { return record_.version; }
    [[nodiscard]] std::int16_t VersionMajor() const { return static_cast<std::int8_t>(record_.version >> 24); }
    [[nodiscard]] std::int16_t VersionMinor() const { return static_cast<std::uint8_t>(record_.version >> 16); }
    [[nodiscard]] std::int16_t VersionRevision() const { return static_cast<std::int16_t>(record_.version % 512); }
    // Returns the version as "4.08.063", or "04.08.063" if `fancy`; `noPoints` omits the dots. Returns an empty string
    // if the version is unknown. Keeps only the last two digits of the minor version, the last three of the revision
    // and, if `fancy`, the last two of the major version.
    [[nodiscard]] Text DisplayVersion(bool fancy = false, bool noPoints = false) const;
    // Like DisplayVersion, but for a list entry; also copies the entry's version to the record.
    Text DisplayVersions(std::int32_t index, bool fancy = false, bool noPoints = false);

    // Looks up the current product again.
    void ReScan();
    [[nodiscard]] bool IsInstalled() const { return record_.IsEntry(); }
    // Uninstalls the current product with Windows Installer, waits for it to finish and looks up the product again.
    // Raises ShellAndWait's error if Windows Installer can't be started.
    void UnInstall(bool quiet = false);

    // Fills the list, in registry order, with the products registered by setup programs or, if `userMode` is true, with
    // those that Windows Installer installed for all users. Overwrites the record.
    void List(bool userMode);
    // Returns the number of products found. The list holds the first 1000 of them.
    [[nodiscard]] std::int32_t Count() const { return count_; }

    // Returns a field of the list entry at `index`, from 1 to Count. For any other index, returns an empty string or 0.
    // Raises 9 (subscript out of range) for entries that the list doesn't hold.
    [[nodiscard]] Text DisplayNames(std::int32_t index) const { return ListEntry(index).displayName; }
    [[nodiscard]] Text UnInstallStrings(std::int32_t index) const { return ListEntry(index).unInstallString; }
    [[nodiscard]] Text GUIs(std::int32_t index) const { return ListEntry(index).gui; }
    [[nodiscard]] std::int32_t Versions(std::int32_t index) const { return ListEntry(index).version; }
    [[nodiscard]] Text InstallLocations(std::int32_t index) const { return ListEntry(index).installLocation; }

    [[nodiscard]] Text InstallLocation() const { return record_.installLocation; }

private:
    struct Record {
        Text displayName;
        Text unInstallString;
        Text gui;
        std::int32_t version = 0;
        Text installLocation;

        [[nodiscard]] bool IsEntry() const { return !gui.empty() && !displayName.empty(); }
    };

    void FindProduct(const Text& match, Text Record::*field);
    static void VisitProducts(bool userMode, const std::function<bool(const Record&)>& visit);
    [[nodiscard]] static Record ReadRecord(const Text& path);
    [[nodiscard]] Record ListEntry(std::int32_t index) const;

    Record record_;
    std::int32_t count_ = 0;
    std::vector<Record> list_;
};
