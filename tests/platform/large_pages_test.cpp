// Small and large tables from the program's allocator, grown, freed and refused.
#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <numeric>
#include <vector>

namespace {

constexpr std::size_t PAGE = std::size_t{2} << 20;
int asked = 0;

}  // namespace

TEST_CASE("tables of all sizes hold what is written into them, the large ones from the start of a page") {
    std::vector<std::vector<std::uint32_t>> tables;
    for (const std::size_t bytes : {std::size_t{4}, 2 * PAGE - 4, 2 * PAGE, 2 * PAGE + 4, 9 * PAGE + 12, PAGE / 2}) {
        tables.emplace_back(bytes / 4);
        std::iota(tables.back().begin(), tables.back().end(), static_cast<std::uint32_t>(bytes));
        if (bytes >= 2 * PAGE) CHECK(reinterpret_cast<std::uintptr_t>(tables.back().data()) % PAGE == 0);
    }
    for (std::vector<std::uint32_t>& table : tables) {
        const std::uint32_t first = table.front();
        table.resize(3 * table.size());  // to another place
        CHECK(table[table.size() / 3 - 1] == first + table.size() / 3 - 1);
        CHECK(table.back() == 0);
    }
}

TEST_CASE("what cannot be had is asked for again while somebody makes room, and then refused") {
    asked = 0;
    std::set_new_handler([] {
        if (++asked == 3) std::set_new_handler(nullptr);
    });
    CHECK_THROWS_AS(static_cast<void>(::operator new(SIZE_MAX / 4)), std::bad_alloc);
    CHECK(asked == 3);
    CHECK(::operator new(SIZE_MAX / 4, std::nothrow) == nullptr);
}
