#include "xmdf/h5_layout.h"

#include "platform/file_system.h"
#include "xmdf/h5_handles.h"

#if H5_VERSION_GE(1, 12, 0)

bool h5LayoutIsSound(hid_t, const char*) { return true; }

#else

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t WIDTH = 8;  // bytes of an address or a length; files of other widths are left to the library
constexpr std::uint64_t LONGEST_BLOCK = 1U << 20;
constexpr std::uint64_t MOST_BLOCKS = 100;
constexpr unsigned LAYOUT_MESSAGE = 8, CONTINUATION_MESSAGE = 16;
constexpr unsigned CHUNKED = 2;

/// A little-endian number; 0 beyond the end.
std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;)
        value = value << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    return value;
}

/// Versions 1 and 2 begin with the number of dimensions and the class, version 3 turns them round and has no padding.
bool messageIsSound(std::string_view layout) {
    const std::uint64_t version = number(layout, 0, 1);
    const bool old = version < 3;
    if (version > 3 || number(layout, old ? 2 : 1, 1) != CHUNKED) return true;
    const std::uint64_t dimensions = number(layout, old ? 1 : 2, 1);
    const std::size_t sizes = (old ? 8 : 3) + WIDTH;
    if (dimensions < 2 || dimensions > H5S_MAX_RANK + 1) return false;
    for (std::size_t i = 0; i < dimensions; ++i)
        if (number(layout, sizes + 4 * i, 4) == 0) return false;
    return true;
}

struct Block {
    std::uint64_t at, length;
};

class Header {
public:
    Header(const std::string& name, std::uint64_t base) : file_(PATH_OF(name), std::ios::binary), base_(base) {}

    /// An old header, version 1, at that address; later ones are told by another first byte and have a checksum.
    bool isSound(std::uint64_t at) {
        const std::string head = read({at, 16});
        if (number(head, 0, 1) != 1) return true;
        blocks_ = {{at + 16, number(head, 8, 4)}};
        for (std::size_t i = 0; i < blocks_.size() && i < MOST_BLOCKS; ++i)
            if (!blockIsSound(read(blocks_[i]))) return false;
        return true;
    }

private:
    std::string read(const Block& block) {
        std::string bytes(static_cast<std::size_t>(std::min(block.length, LONGEST_BLOCK)), '\0');
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(base_ + block.at));
        file_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(file_.gcount()));
        return bytes;
    }
    bool blockIsSound(std::string_view bytes) {
        for (std::size_t at = 0; at + 8 <= bytes.size();) {
            const std::uint64_t type = number(bytes, at, 2);
            const auto length = static_cast<std::size_t>(number(bytes, at + 2, 2));
            const std::string_view message = bytes.substr(at + 8, length);
            if (type == LAYOUT_MESSAGE && !messageIsSound(message)) return false;
            if (type == CONTINUATION_MESSAGE)
                blocks_.push_back({number(message, 0, WIDTH), number(message, WIDTH, WIDTH)});
            at += 8 + length;
        }
        return true;
    }

    std::ifstream file_;
    std::uint64_t base_;
    std::vector<Block> blocks_;
};

}  // namespace

bool h5LayoutIsSound(hid_t group, const char* member) {
    H5O_info_t info{};
    if (H5Oget_info_by_name2(group, member, &info, H5O_INFO_BASIC, H5P_DEFAULT) < 0) return true;
    const H5File file(H5Iget_file_id(group));
    const H5Properties made(H5Fget_create_plist(file.id()));
    std::size_t addresses = 0, lengths = 0;
    hsize_t userBlock = 0;
    if (H5Pget_sizes(made.id(), &addresses, &lengths) < 0 || addresses != WIDTH || lengths != WIDTH) return true;
    H5Pget_userblock(made.id(), &userBlock);
    std::string name(static_cast<std::size_t>(std::max<ssize_t>(0, H5Fget_name(group, nullptr, 0))), '\0');
    H5Fget_name(group, name.data(), name.size() + 1);
    return Header(name, userBlock).isSound(info.addr);
}

#endif
