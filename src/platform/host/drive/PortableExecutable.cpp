#include "platform/host/drive/PortableExecutable.h"

#include <array>
#include <optional>

namespace platform::host {

namespace {

// The numbers of the format, all little-endian.
constexpr std::uint16_t DosSignature = 0x5A4D;    // "MZ"
constexpr std::uint32_t ImageSignature = 0x4550;  // "PE", 0, 0
constexpr std::uint16_t Optional32Magic = 0x10B;
constexpr std::uint16_t Optional64Magic = 0x20B;
constexpr std::uint64_t ImageSignatureOffsetAt = 0x3C;
constexpr std::uint64_t FileHeaderSize = 20;
constexpr std::uint64_t SectionHeaderSize = 40;
constexpr std::uint32_t ResourceDirectoryIndex = 2;
constexpr std::uint64_t DirectoryHeaderSize = 16;
constexpr std::uint64_t DirectoryEntrySize = 8;
constexpr std::uint32_t HighBit = 0x80000000U;

constexpr std::uint16_t VersionType = 16;   // RT_VERSION
constexpr std::uint16_t VersionNumber = 1;  // VS_VERSION_INFO

// The languages that the resource loader of a German system tries, in order, before it takes the first one there is:
// neutral, German (Germany), German, English (United States).
constexpr std::array<std::uint16_t, 4> Languages = {0x0000, 0x0407, 0x0007, 0x0409};

std::uint32_t NumberAt(std::span<const char> bytes, std::size_t offset, std::size_t width) {
    std::uint32_t number = 0;
    for (std::size_t index = width; index > 0; --index) {
        number = number << 8U | static_cast<unsigned char>(bytes[offset + index - 1]);
    }
    return number;
}

std::uint16_t Word(std::span<const char> bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(NumberAt(bytes, offset, 2));
}

std::uint32_t DoubleWord(std::span<const char> bytes, std::size_t offset) {
    return NumberAt(bytes, offset, 4);
}

// The section that holds the resource tree, and the tree's place in it.
struct ResourceSection {
    std::uint32_t virtualAddress;
    std::uint32_t fileOffset;
    std::uint32_t size;  // in the file
    std::uint32_t tree;  // offset in the section
};

// A data directory's address of the resource tree, and where the section headers stand.
struct ImageHeaders {
    std::uint32_t resourceAddress;
    std::uint64_t sections;
    std::uint16_t sectionCount;
};

std::optional<ImageHeaders> ReadHeaders(const ImageReader& read) {
    std::array<char, 4> dos{};
    std::array<char, 4> imageOffset{};
    if (!read(0, std::span(dos).first(2)) || Word(dos, 0) != DosSignature ||
        !read(ImageSignatureOffsetAt, imageOffset)) {
        return {};
    }
    const std::uint64_t image = DoubleWord(imageOffset, 0);
    std::array<char, 4 + FileHeaderSize + 2> header{};
    if (!read(image, header) || DoubleWord(header, 0) != ImageSignature) {
        return {};
    }
    const std::uint16_t magic = Word(header, 4 + FileHeaderSize);
    if (magic != Optional32Magic && magic != Optional64Magic) {
        return {};
    }
    const std::uint64_t optionalHeader = image + 4 + FileHeaderSize;
    const std::uint64_t directories = optionalHeader + (magic == Optional64Magic ? 112 : 96);
    std::array<char, 4> directoryCount{};
    std::array<char, 8> directory{};
    if (!read(directories - 4, directoryCount) || DoubleWord(directoryCount, 0) <= ResourceDirectoryIndex ||
        !read(directories + directory.size() * ResourceDirectoryIndex, directory)) {
        return {};
    }
    return ImageHeaders{.resourceAddress = DoubleWord(directory, 0),
                        .sections = optionalHeader + Word(header, 4 + 16),
                        .sectionCount = Word(header, 4 + 2)};
}

std::optional<ResourceSection> FindResourceSection(const ImageReader& read) {
    const std::optional<ImageHeaders> headers = ReadHeaders(read);
    if (!headers || headers->resourceAddress == 0) {
        return {};
    }
    for (std::uint16_t index = 0; index < headers->sectionCount; ++index) {
        std::array<char, SectionHeaderSize> header{};
        if (!read(headers->sections + index * SectionHeaderSize, header)) {
            return {};
        }
        const ResourceSection section{.virtualAddress = DoubleWord(header, 12),
                                      .fileOffset = DoubleWord(header, 20),
                                      .size = DoubleWord(header, 16),
                                      .tree = headers->resourceAddress - DoubleWord(header, 12)};
        if (headers->resourceAddress >= section.virtualAddress && section.tree < section.size) {
            return section;
        }
    }
    return {};
}

// The resource tree: directories of three levels (type, number, language) whose entries are sorted, those with a name
// before those with a number.
class ResourceTree {
public:
    ResourceTree(const ImageReader& read, const ResourceSection& section) : read_(read), section_(section) {}

    // The version block's place and size in the file.
    struct Data {
        std::uint64_t fileOffset;
        std::uint32_t size;
    };
    [[nodiscard]] std::optional<Data> FindVersion() const {
        const std::optional<std::uint32_t> type = Subdirectory(EntryById(0, VersionType));
        const std::optional<std::uint32_t> number = type ? Subdirectory(EntryById(*type, VersionNumber)) : type;
        return number ? LeafData(EntryByLanguage(*number)) : std::optional<Data>();
    }

private:
    // An entry's second number: the offset of a leaf in the tree, or with the high bit that of a directory.
    using Entry = std::optional<std::uint32_t>;

    bool Read(std::uint64_t offset, std::span<char> bytes) const {
        return offset + bytes.size() <= section_.size - section_.tree &&
               read_(section_.fileOffset + std::uint64_t{section_.tree} + offset, bytes);
    }

    // The number of entries with a name and of those with a number.
    [[nodiscard]] std::optional<std::array<std::uint32_t, 2>> Counts(std::uint32_t directory) const {
        std::array<char, 4> counts{};
        if (!Read(directory + DirectoryHeaderSize - counts.size(), counts)) {
            return {};
        }
        return std::array<std::uint32_t, 2>{Word(counts, 0), Word(counts, 2)};
    }

    bool ReadEntry(std::uint32_t directory, std::uint32_t index, std::array<char, DirectoryEntrySize>& entry) const {
        return Read(directory + DirectoryHeaderSize + index * DirectoryEntrySize, entry);
    }

    // By halving, as the system's own loader looks.
    [[nodiscard]] Entry EntryById(std::uint32_t directory, std::uint16_t id) const {
        const auto counts = Counts(directory);
        if (!counts) {
            return {};
        }
        std::uint32_t low = (*counts)[0];
        std::uint32_t high = low + (*counts)[1];
        while (low < high) {
            const std::uint32_t middle = (low + high) / 2;
            std::array<char, DirectoryEntrySize> entry{};
            if (!ReadEntry(directory, middle, entry)) {
                return {};
            }
            const std::uint32_t found = DoubleWord(entry, 0);
            if (found == id) {
                return DoubleWord(entry, 4);
            }
            (found < id ? low : high) = found < id ? middle + 1 : middle;
        }
        return {};
    }

    [[nodiscard]] Entry EntryByLanguage(std::uint32_t directory) const {
        for (const std::uint16_t language : Languages) {
            if (const Entry entry = EntryById(directory, language)) {
                return entry;
            }
        }
        const auto counts = Counts(directory);
        std::array<char, DirectoryEntrySize> first{};
        if (!counts || (*counts)[0] + (*counts)[1] == 0 || !ReadEntry(directory, 0, first)) {
            return {};
        }
        return DoubleWord(first, 4);
    }

    static std::optional<std::uint32_t> Subdirectory(const Entry& entry) {
        return entry && (*entry & HighBit) != 0 ? std::optional(*entry & ~HighBit) : std::nullopt;
    }

    [[nodiscard]] std::optional<Data> LeafData(const Entry& entry) const {
        std::array<char, 8> leaf{};
        if (!entry || (*entry & HighBit) != 0 || !Read(*entry, leaf)) {
            return {};
        }
        const std::uint32_t address = DoubleWord(leaf, 0);
        const std::uint32_t size = DoubleWord(leaf, 4);
        const std::uint32_t offset = address - section_.virtualAddress;
        if (address < section_.virtualAddress || std::uint64_t{offset} + size > section_.size) {
            return {};
        }
        return Data{.fileOffset = std::uint64_t{section_.fileOffset} + offset, .size = size};
    }

    const ImageReader& read_;
    ResourceSection section_;
};

}  // namespace

std::vector<char> VersionBlock(const ImageReader& read) {
    const std::optional<ResourceSection> section = FindResourceSection(read);
    const std::optional<ResourceTree::Data> data = section ? ResourceTree(read, *section).FindVersion() : std::nullopt;
    if (!data || data->size > VersionBlockLimit) {
        return {};
    }
    std::vector<char> block(data->size);
    return read(data->fileOffset, block) ? block : std::vector<char>();
}

std::span<const char> FixedVersion(std::span<const char> block) {
    // Length of the block, length and kind of its value, then its key in 16-bit characters up to a zero.
    constexpr std::size_t headSize = 6;
    std::size_t value = headSize;
    while (value + 2 <= block.size() && Word(block, value) != 0) {
        value += 2;
    }
    // The value stands on the next multiple of four behind that zero.
    value = (value + 2 + 3) / 4 * 4;
    if (value + FixedVersionSize > block.size() || Word(block, 2) < FixedVersionSize ||
        DoubleWord(block, value) != FixedVersionSignature) {
        return {};
    }
    return block.subspan(value, FixedVersionSize);
}

}  // namespace platform::host
