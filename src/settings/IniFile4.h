#pragma once

#include <memory>

#include "common/Text.h"
#include "settings/KeyedList.h"

// The lines of a section: the heading "[name]", stored as the item "_", then "name=value" for each item, or just "name"
// if the item has no value.
using IniSection = KeyedList<Text>;
using IniSections = KeyedList<IniSection>;

// An INI document in memory. Section and item names are case-insensitive; a section keeps its first spelling. Read
// errors aren't raised: the document keeps what was read before the error. Looking up a missing item returns an empty
// string. Reading drops lines that are neither `[name]` nor `name=value`, such as comments and empty lines.
class IniFile4 {
public:
    // The document, shared with the caller. Clear, ReadFile and setting a null pointer replace it with a new one.
    [[nodiscard]] std::shared_ptr<IniSections> Sections() const { return sections_; }
    void Sections(std::shared_ptr<IniSections> sections);

    // Setting the path also reads the file, replacing the document.
    [[nodiscard]] Text FilePath() const { return filePath_; }
    void FilePath(const Text& thisFilePath);

    // Clears the document but keeps the path and the current section, to which any lines read next are added.
    void Clear();

    // Replaces the document with the file's content. If a path is passed, sets FilePath to it first. Stops at a line of
    // more than 32767 characters.
    void ReadFile(const Text& thisFilePath = {});

    // Creates the section if it is missing.
    void Section(const Text& thisName);

    // Sets an item and moves it to the end of its section. Creates the section if it is missing.
    void Value(const Text& thisSection, const Text& thisName, const Text& thisValue);
    // Returns an item's value, or the item's name if it has no value. Raises 6 (overflow) if the item's line has more
    // than 32767 characters.
    [[nodiscard]] Text Value(const Text& thisSection, const Text& thisName) const;
    // Returns an item's whole line.
    [[nodiscard]] Text ValueFull(const Text& thisSection, const Text& thisName) const;

    // Writes the document to the file, completely or not at all. If a path is passed, sets FilePath to it first. An
    // empty document isn't written. Raises 58 if the file exists and `thisOverwite` is false, or another file error if
    // the write fails.
    void WriteFile(const Text& thisFilePath = {}, bool thisOverwite = false);

    // Returns the document as lines separated by CR LF: each section's heading and items, followed by an empty line. If
    // an error occurs, the last line is the error's description.
    [[nodiscard]] Text Stream() const;

    // Deletes the document's file. Ignores failures.
    void Delete() const;
    // True if the document's file exists, even if it is hidden, and isn't a folder.
    [[nodiscard]] bool Exists() const;

private:
    void ParseLine(const Text& fileLine);

    std::shared_ptr<IniSections> sections_ = std::make_shared<IniSections>();
    Text filePath_;
    Text readSection_;
};
