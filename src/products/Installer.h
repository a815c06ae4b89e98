#pragma once

#include <cstdint>
#include <vector>

#include "common/Text.h"
#include "settings/Registry.h"

// What the local machine's registry knows of installed products. An object holds two independent things: the record of
// the current product, which setting a name or a GUID looks up, and the product list, which List fills. A product is
// known by its display name and by the GUID in the first braces of its uninstall string; without both it does not
// count. Names and GUIDs are compared whole and with their case.
//
// No failure of the registry is raised: what cannot be read is a product not found or a field left empty. While the
// registry is walked, pending window messages get a turn after each product.
class Installer {
public:
    // Looks the first product of this name up, an empty record being the outcome when there is none.
    void DisplayName(const Text& thisDisplayName);
    [[nodiscard]] Text DisplayName() const { return record_.displayName; }
    // The same by the GUID, without braces.
    void GUI(const Text& thisGUI);
    [[nodiscard]] Text GUI() const { return record_.gui; }
    // With braces.
    [[nodiscard]] Text GUIdeco() const { return u"{" + record_.gui + u"}"; }

    // The version as it is stored, 0 for none: the major number in the highest byte, the minor one in the next, the
    // revision in the lowest 9 bits.
    [[nodiscard]] std::int32_t Version() const { return record_.version; }
    [[nodiscard]] std::int16_t VersionMajor() const;     // -128 to 127
    [[nodiscard]] std::int16_t VersionMinor() const;     // 0 to 255
    [[nodiscard]] std::int16_t VersionRevision() const;  // -511 to 511, with the sign of Version
    // "4.08.063", with `fancy` "04.08.063", with `noPoints` without the points; the empty text for no version. Minor
    // number and revision keep their last two and three digits, with `fancy` the major one its last two.
    [[nodiscard]] Text DisplayVersion(bool fancy = false, bool noPoints = false) const;
    // The same for an entry of the list, whose version the record has afterwards.
    Text DisplayVersions(std::int32_t index, bool fancy = false, bool noPoints = false);

    // Looks the current product up anew.
    void ReScan();
    [[nodiscard]] bool IsInstalled() const { return IsEntry(); }
    // Removes the current product with the system's installer, waits for that program however long it takes, and looks
    // the product up anew. Raises the error of a start that failed.
    void UnInstall(bool quiet = false);

    // Fills the list, in the order of the registry: with the products that setup programs have registered, or with
    // those in the installer's own data for the whole machine when `userMode` is set. The record serves as working
    // storage.
    void List(bool userMode);
    // The number of products that were found. The list holds the first 1000 of them.
    [[nodiscard]] std::int32_t Count() const { return count_; }

    // Entries of the list, from 1 to Count. An index outside gives the empty text or 0; one of an entry that the list
    // does not hold any more is the subscript error (9).
    [[nodiscard]] Text DisplayNames(std::int32_t index) const;
    [[nodiscard]] Text UnInstallStrings(std::int32_t index) const;
    [[nodiscard]] Text GUIs(std::int32_t index) const;
    [[nodiscard]] std::int32_t Versions(std::int32_t index) const;
    [[nodiscard]] Text InstallLocations(std::int32_t index) const;

    [[nodiscard]] Text InstallLocation() const { return record_.installLocation; }

private:
    struct Record {
        Text displayName;
        Text unInstallString;
        Text gui;
        std::int32_t version = 0;
        Text installLocation;
    };

    void ClearRecord() { record_ = {}; }
    [[nodiscard]] bool IsEntry() const { return !record_.gui.empty() && !record_.displayName.empty(); }
    void FindProduct(const Text& match, bool byGUI);
    void ScanProducts(const Text& match, bool byGUI, bool userMode);
    void ReadRecord(const Text& path);
    bool EndsWalk(const Text& match, bool byGUI);
    void ListAdd();
    template <typename Field>
    [[nodiscard]] Field ListEntry(Field Record::*field, std::int32_t index) const;

    Record record_;
    std::int32_t count_ = 0;
    std::vector<Record> list_;
};
