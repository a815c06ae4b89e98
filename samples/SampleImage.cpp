#include "samples/SampleImage.h"

#include <cstddef>

#include "platform/Bytes.h"

namespace {

constexpr std::size_t FileAlignment = 0x200;
constexpr std::uint32_t SectionAlignment = 0x1000;
constexpr std::uint32_t DirectoryBit = 0x80000000U;

// File offsets. The three directories of the resource tree are followed by its leaf and the version block.
constexpr std::size_t TreeOffset = 0x200;
constexpr std::uint32_t DirectoryEntries = 4;
constexpr std::size_t DirectorySize = 16 + DirectoryEntries * 8;
constexpr std::size_t BlockOffset = TreeOffset + 3 * DirectorySize + 16;
constexpr std::size_t BlockSize = 92;

// Collects the file's bytes. Numbers are little-endian.
class Bytes {
public:
    void Word(std::uint32_t number) { bytes_ += platform::BytesFromNumber(number).substr(0, 2); }
    void DoubleWord(std::uint32_t number) { bytes_ += platform::BytesFromNumber(number); }
    // Appends a 64-bit number if `wide`, otherwise a 32-bit number.
    void Address(std::uint32_t number, bool wide) {
        DoubleWord(number);
        Zeros(wide ? 4 : 0);
    }
    void Zeros(std::size_t count) { bytes_.append(count, '\0'); }
    void FillTo(std::size_t size) { bytes_.resize(size, '\0'); }
    void Append(const std::string& text) { bytes_ += text; }
    [[nodiscard]] const std::string& Content() const { return bytes_; }

private:
    std::string bytes_;
};

void FileHeader(Bytes& image, bool wide) {
    image.Append("MZ");
    image.FillTo(0x3C);
    image.DoubleWord(0x40);
    image.DoubleWord(0x4550);            // "PE"
    image.Word(wide ? 0x8664 : 0x14C);   // x86-64, i386
    image.Word(1);                       // number of sections
    image.Zeros(12);                     // time stamp, symbol table
    image.Word(wide ? 240 : 224);        // size of the optional header
    image.Word(wide ? 0x2022 : 0x2102);  // executable image, DLL, and large-address-aware or 32-bit
}

void OptionalHeader(Bytes& image, bool wide) {
    image.Word(wide ? 0x20B : 0x10B);
    image.Zeros(2 + 4);
    image.DoubleWord(FileAlignment);     // size of initialised data
    image.Zeros(4 + 4);                  // uninitialised data, entry point
    image.DoubleWord(SectionAlignment);  // base of code
    image.Zeros(wide ? 0 : 4);           // base of data
    image.Address(0x10000000, wide);     // image base
    image.DoubleWord(SectionAlignment);
    image.DoubleWord(FileAlignment);
    image.Word(4);  // operating system version 4.0
    image.Zeros(2 + 4);
    image.Word(4);  // subsystem version 4.0
    image.Zeros(2 + 4);
    image.DoubleWord(2 * SectionAlignment);  // size of the image
    image.DoubleWord(FileAlignment);         // size of the headers
    image.Zeros(4);
    image.Word(2);  // graphical subsystem
    image.Zeros(2);
    for (const std::uint32_t size : {0x100000U, 0x1000U, 0x100000U, 0x1000U}) {
        image.Address(size, wide);  // stack and heap
    }
    image.Zeros(4);
    image.DoubleWord(16);  // data directories; the third holds the resources
    image.Zeros(16);
    image.DoubleWord(SectionAlignment);
    image.DoubleWord(static_cast<std::uint32_t>(BlockOffset + BlockSize - TreeOffset));
    image.Zeros(13 * std::size_t{8});
}

void SectionHeader(Bytes& image) {
    image.Append(std::string(".rsrc\0\0\0", 8));
    image.DoubleWord(FileAlignment);
    image.DoubleWord(SectionAlignment);
    image.DoubleWord(FileAlignment);
    image.DoubleWord(static_cast<std::uint32_t>(TreeOffset));
    image.Zeros(12);
    image.DoubleWord(0x40000040);  // initialised data, readable
}

// A directory of the resource tree. Only the entry `wanted` leads to the version block.
struct Level {
    std::array<std::uint32_t, DirectoryEntries> ids;
    std::uint32_t wanted;
};
constexpr std::array<Level, 3> Levels = {{
    {{3, 10, 14, 16}, 16},                  // RT_VERSION
    {{1, 2, 3, 4}, 1},                      // VS_VERSION_INFO
    {{0x407, 0x40C, 0x410, 0x413}, 0x407},  // German
}};

void ResourceTree(Bytes& image) {
    for (std::size_t level = 0; level < Levels.size(); ++level) {
        const auto next = static_cast<std::uint32_t>((level + 1) * DirectorySize);
        image.Zeros(12);
        image.Word(0);                 // number of named entries
        image.Word(DirectoryEntries);  // number of ID entries
        for (const std::uint32_t id : Levels[level].ids) {
            image.DoubleWord(id);
            image.DoubleWord(id == Levels[level].wanted ? next | (level < 2 ? DirectoryBit : 0) : DirectoryBit);
        }
    }
    image.DoubleWord(SectionAlignment + static_cast<std::uint32_t>(BlockOffset - TreeOffset));
    image.DoubleWord(BlockSize);
    image.Zeros(8);
}

void VersionBlockStart(Bytes& image) {
    image.Word(BlockSize);
    image.Word(52);  // size of VS_FIXEDFILEINFO
    image.Word(0);   // value type: binary
    for (const char character : std::string("VS_VERSION_INFO")) {
        image.Word(static_cast<unsigned char>(character));
    }
    image.Zeros(4);  // the key's terminator and padding
}

void VersionBlock(Bytes& image, const SampleImageFacts& facts) {
    VersionBlockStart(image);
    image.DoubleWord(0xFEEF04BD);
    image.DoubleWord(0x10000);
    for (int copy = 0; copy < 2; ++copy) {  // file version and product version
        for (const std::size_t index : {1U, 0U, 3U, 2U}) {
            image.Word(facts.version[index]);
        }
    }
    image.DoubleWord(0x3F);  // dwFileFlagsMask
    image.DoubleWord(0);
    image.DoubleWord(4);  // VOS__WINDOWS32
    image.DoubleWord(facts.fileType);
    image.Zeros(12);
}

}  // namespace

std::string SampleImage(const SampleImageFacts& facts) {
    Bytes image;
    FileHeader(image, facts.wide);
    OptionalHeader(image, facts.wide);
    SectionHeader(image);
    VersionBlockStart(image);  // a decoy: programs that read version blocks contain the key too
    image.FillTo(TreeOffset);
    ResourceTree(image);
    VersionBlock(image, facts);
    image.FillTo(TreeOffset + FileAlignment);
    return image.Content();
}
