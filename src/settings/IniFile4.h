#pragma once

#include <memory>

#include "common/Text.h"
#include "settings/KeyedList.h"

// The lines of a section: first its heading "[name]", under the key of the name "_", then "name=value" for each item,
// or the bare name of an item without a value.
using IniSection = KeyedList<Text>;
using IniSections = KeyedList<IniSection>;

// A document of sections and items in the style of an INI file, held in memory. Names that differ only in case are one
// name; of a section the first spelling stays. Reading and looking up never fail: a file that cannot be read gives what
// could be read of it, a missing item the empty text. Comments and empty lines of a file are not kept.
class IniFile4 {
public:
    // The document itself, shared with whoever holds it. Clearing and reading begin a new one, and so does setting it
    // to null.
    [[nodiscard]] std::shared_ptr<IniSections> Sections() const { return sections_; }
    void Sections(std::shared_ptr<IniSections> sections);

    // Setting the path of the document's file replaces the document by what the file holds.
    [[nodiscard]] Text FilePath() const { return filePath_; }
    void FilePath(const Text& thisFilePath);

    // Empties the document. The path stays, and so does the section that lines being read go to.
    void Clear();

    // Replaces the document by the file's content; a path that is given becomes FilePath first. A line of more than
    // 32767 characters ends the reading.
    void ReadFile(const Text& thisFilePath = {});

    // Makes sure that the section exists.
    void Section(const Text& thisName);

    // Sets an item, which moves to the end of its section; the section is created when needed.
    void Value(const Text& thisSection, const Text& thisName, const Text& thisValue);
    // An item's value. An item without one gives its name. A line of more than 32767 characters raises the overflow
    // error (6).
    [[nodiscard]] Text Value(const Text& thisSection, const Text& thisName) const;
    // An item's whole line.
    [[nodiscard]] Text ValueFull(const Text& thisSection, const Text& thisName) const;

    // Writes the document to the file, whole or not at all; a path that is given becomes FilePath first. An empty
    // document writes nothing. Raises that the file exists (58) unless it is to be overwritten, and the error of a
    // write that fails.
    void WriteFile(const Text& thisFilePath = {}, bool thisOverwite = false);

    // The document as one text: each section's heading, its items and one empty line, joined by CR LF. An error ends it
    // with the error's description as the last line.
    [[nodiscard]] Text Stream() const;

    // Deletes the document's file, if that can be done.
    void Delete() const;
    // True when the document's file is there, hidden or not; a folder is none.
    [[nodiscard]] bool Exists() const;

private:
    void ParseLine(const Text& fileLine);

    std::shared_ptr<IniSections> sections_ = std::make_shared<IniSections>();
    Text filePath_;
    Text readSection_;
};
