#include "platform/host/drive/PortableExecutable.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace platform::host {

namespace {

// The numbers of the format.
constexpr std::uint16_t DosSignature = 0x5A4D;    // "MZ"
constexpr std::uint32_t ImageSignature = 0x4550;  // "PE", 0, 0
constexpr std::uint16_t Optional32Magic = 0x10B;
constexpr std::uint16_t Optional64Magic = 0x20B;
constexpr std::size_t ResourceDirectory = 2;
constexpr std::size_t SectionHeaderSize = 40;
constexpr std::size_t DirectoryHeaderSize = 16;
constexpr std::size_t DirectoryEntrySize = 8;
constexpr std::uint32_t SubdirectoryBit = 0x80000000U;
constexpr std::uint32_t VersionType = 16;   // RT_VERSION
constexpr std::uint32_t VersionNumber = 1;  // VS_VERSION_INFO
constexpr std::size_t FixedVersionSize = 52;
constexpr std::uint32_t FixedVersionSignature = 0xFEEF04BD;

// The little-endian number at `offset`. Throws std::out_of_range where the bytes end before it does.
std::uint32_t NumberAt(std::string_view bytes, std::size_t offset, std::size_t width) {
    std::uint32_t number = 0;
    for (std::size_t index = width; index > 0; --index) {
        number = number << 8U | static_cast<unsigned char>(bytes.at(offset + index - 1));
    }
    return number;
}

std::uint32_t Word(std::string_view bytes, std::size_t offset) {
    return NumberAt(bytes, offset, 2);
}

std::uint32_t DoubleWord(std::string_view bytes, std::size_t offset) {
    return NumberAt(bytes, offset, 4);
}

// A part of the bytes that has to be there whole.
std::string_view Slice(std::string_view bytes, std::size_t offset, std::size_t size) {
    const std::string_view part = bytes.substr(offset, size);
    return part.size() == size ? part : throw std::out_of_range("a part beyond the end");
}

// The section that holds the resource tree, and the tree in it up to the section's end.
struct Resources {
    std::uint32_t address = 0;
    std::string_view section;
    std::string_view tree;
};

Resources FindResources(std::string_view image) {
    const std::size_t header = DoubleWord(image, 0x3C);
    if (Word(image, 0) != DosSignature || DoubleWord(image, header) != ImageSignature) {
        return {};
    }
    const std::size_t optionalHeader = header + 24;
    const std::uint32_t magic = Word(image, optionalHeader);
    const std::size_t directories = optionalHeader + (magic == Optional64Magic ? 112 : 96);
    if ((magic != Optional32Magic && magic != Optional64Magic) ||
        DoubleWord(image, directories - 4) <= ResourceDirectory) {
        return {};
    }
    const std::uint32_t tree = DoubleWord(image, directories + ResourceDirectory * 8);
    std::size_t section = optionalHeader + Word(image, header + 20);
    for (std::uint32_t count = Word(image, header + 6); tree != 0 && count > 0; --count) {
        const std::uint32_t address = DoubleWord(image, section + 12);
        const std::uint32_t size = DoubleWord(image, section + 16);  // in the file
        if (tree >= address && tree - address < size) {
            const std::string_view bytes = image.substr(DoubleWord(image, section + 20), size);
            return {address, bytes, bytes.substr(tree - address)};
        }
        section += SectionHeaderSize;
    }
    return {};
}

// Where the entry with this identifier leads to: from the start of the tree, a directory or a leaf. Without an
// identifier it is the first entry. An entry that has a name has SubdirectoryBit in its first number, and is no match.
std::size_t FindEntry(std::string_view tree, std::size_t directory, std::optional<std::uint32_t> identifier) {
    const std::size_t count = Word(tree, directory + 12) + Word(tree, directory + 14);
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = directory + DirectoryHeaderSize + index * DirectoryEntrySize;
        if (!identifier || DoubleWord(tree, entry) == *identifier) {
            return DoubleWord(tree, entry + 4) & ~SubdirectoryBit;
        }
    }
    throw std::out_of_range("no such entry");
}

std::string_view FindVersion(const Resources& resources) {
    const std::size_t type = FindEntry(resources.tree, 0, VersionType);
    const std::size_t number = FindEntry(resources.tree, type, VersionNumber);
    const std::size_t leaf = FindEntry(resources.tree, number, {});
    const std::size_t address = DoubleWord(resources.tree, leaf);
    return Slice(resources.section, address - resources.address, DoubleWord(resources.tree, leaf + 4));
}

}  // namespace

std::string_view VersionBlock(std::string_view image) {
    try {
        return FindVersion(FindResources(image));
    } catch (const std::out_of_range&) {
        return {};
    }
}

std::string_view FixedVersion(std::string_view block) {
    // Behind the lengths of block and value, the value's kind, and the key "VS_VERSION_INFO" in 16-bit characters.
    constexpr std::size_t place = 40;
    const std::string_view fixed = block.substr(std::min(place, block.size()), FixedVersionSize);
    const bool isSound = fixed.size() == FixedVersionSize && Word(block, 2) >= FixedVersionSize &&
                         DoubleWord(fixed, 0) == FixedVersionSignature;
    return isSound ? fixed : std::string_view();
}

}  // namespace platform::host
