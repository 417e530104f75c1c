#include "gis/shp_block.h"

#include "services/files.h"

#include <utility>

bool OutputBlock::flush() {
    const std::size_t count = std::exchange(used_, 0);
    return count == 0 || WRITE_BYTES(file_, std::string_view(bytes_.data(), count));
}

bool OutputBlock::append(std::string_view bytes) { return flush() && WRITE_BYTES(file_, bytes); }
