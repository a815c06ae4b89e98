#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "common/Text.h"
#include "settings/Registry.h"

// Finds installed products in the local machine's registry. Holds two independent results: the record of the current
// product, found by setting DisplayName or GUI, and the product list, filled by List. An entry without a display name,
// or without a GUID in the first braces of its uninstall string, is ignored. Names and GUIDs must match exactly,
// including case.
//
// Registry failures aren't raised: a product that can't be read isn't found, and a field that can't be read is empty.
// During a walk through the registry, pending window messages are processed after each product.
class Installer {
public:
    // Finds the first product with this display name. If there is none, the record is empty.
    void DisplayName(const Text& thisDisplayName);
    [[nodiscard]] Text DisplayName() const { return record_.displayName; }
    // Does the same for a GUID, without braces.
    void GUI(const Text& thisGUI);
    [[nodiscard]] Text GUI() const { return record_.gui; }
    // Returns the GUID in braces.
    [[nodiscard]] Text GUIdeco() const { return u"{" + record_.gui + u"}"; }

    // The stored version, 0 if unknown: the major version in the highest byte, the minor version in the next, the
    // revision in the lowest 9 bits.
    [[nodiscard]] std::int32_t Version() const { return record_.version; }
    [[nodiscard]] std::int16_t VersionMajor() const;     // -128 to 127
    [[nodiscard]] std::int16_t VersionMinor() const;     // 0 to 255
    [[nodiscard]] std::int16_t VersionRevision() const;  // -511 to 511, with the sign of Version
    // Returns the version as "4.08.063", with `fancy` as "04.08.063", with `noPoints` without the points, or an empty
    // string if it is unknown. Only the last two digits of the minor version are shown, the last three of the revision
    // and, with `fancy`, the last two of the major version.
    [[nodiscard]] Text DisplayVersion(bool fancy = false, bool noPoints = false) const;
    // Does the same for an entry of the list, and copies the entry's version to the record.
    Text DisplayVersions(std::int32_t index, bool fancy = false, bool noPoints = false);

    // Finds the current product again.
    void ReScan();
    [[nodiscard]] bool IsInstalled() const { return record_.IsEntry(); }
    // Uninstalls the current product with Windows Installer, waits until it ends, and finds the product again. Raises
    // the error of a failed start.
    void UnInstall(bool quiet = false);

    // Fills the list in the order of the registry: with the products registered by setup programs or, if `userMode` is
    // true, with the products that Windows Installer installed for all users. Overwrites the record.
    void List(bool userMode);
    // Returns the number of products found. The list holds the first 1000 of them.
    [[nodiscard]] std::int32_t Count() const { return count_; }

    // Return a field of a list entry, from 1 to Count. Return an empty string or 0 for any other index. Raise 9
    // (subscript) for an entry that the list doesn't hold.
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
