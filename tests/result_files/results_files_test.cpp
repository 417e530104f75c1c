#include "result_files/dat_writer.h"
#include "result_files/value_range.h"
#include "result_files/written_flags.h"
#include "run_control/file_listing.h"

#include "profiles/small_flood.h"
#include "services/files.h"
#include "testing.h"

#include <bit>

namespace {

std::string integers(std::initializer_list<std::int32_t> values) {
    std::string bytes;
    for (const std::int32_t value : values)
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    return bytes;
}
std::int32_t real(float value) { return std::bit_cast<std::int32_t>(value); }

}  // namespace

TEST_CASE("A .dat holds hours, interleaved vectors, 8-bit flags and its values bit for bit") {
    INITIALISE_FILES();
    const TemporaryFolder folder;
    const float odd = std::bit_cast<float>(0x7FC00123);  // not a number, with a payload
    Results results;
    results.nodes = 3;
    results.vector = true;
    results.x = {NO_VALUE, 1.5F, odd, 3.0F};
    results.y = {NO_VALUE, -1.0F, -2.0F, NO_VALUE};
    DatWriter writer(folder.name("x.dat"), {"Vector Velocity", true, 3, 2});
    results.time = {2.5};
    const std::vector<std::uint8_t> flags = {1, 0};
    writer.write(results, flags);
    results.time = TIME_OF_PEAK_VELOCITY;  // a .dat knows one kind of such times
    writer.write(results, {});
    writer.close();
    const std::string values =
        integers({real(1.5F), real(-1.0F), 0x7FC00123, real(-2.0F), real(3.0F), real(-99999.0F)});
    CHECK(folder.read("x.dat") == integers({3000, 100, 3, 110, 4, 120, 1, 140, 150, 0, 160, 1, 170, 3, 180, 2, 190}) +
                                      "Vector Velocity" + std::string(25, ' ') + integers({250, 0}) + integers({200}) +
                                      '\1' + integers({real(2.5F)}) + '\1' + '\0' + values + integers({200}) + '\0' +
                                      integers({real(99999.1F)}) + values + integers({210}));
}

TEST_CASE("Flags are those of the source, 0 in removed parts, and absent where nothing tells cells apart") {
    Mesh mesh = smallMesh();
    const auto flagsOf = [&](bool flagged) {
        Results results = scalarResults({1, 2, 3, 4, 5, 6});
        results.wet = {0, 0, 1};
        results.flagged = flagged;
        WrittenFlags flags(mesh);
        const auto span = flags.of(results);
        return std::vector<int>(span.begin(), span.end());
    };
    CHECK(flagsOf(true) == std::vector{0, 1});
    CHECK(flagsOf(false).empty());
    mesh.elements[2].removed = true;
    CHECK(flagsOf(true) == std::vector{0, 0});
    CHECK(flagsOf(false) == std::vector{1, 0});
}

TEST_CASE("A range leaves out what is missing, and of vectors takes magnitudes") {
    Results results = scalarResults({NO_VALUE, -3, 2, NO_VALUE, 0, 1});
    CHECK((VALUE_RANGE(results).least == -3.0F && VALUE_RANGE(results).most == 2.0F));
    results.vector = true;
    results.y = {NO_VALUE, 5, 4, NO_VALUE, 1, 1, 0};  // the first, third and fourth lack a component
    CHECK((VALUE_RANGE(results).least == 1.0F && VALUE_RANGE(results).most == 5.0F));
    CHECK(VALUE_RANGE(scalarResults({NO_VALUE})).most == NO_VALUE);
    CHECK(WIDENED({NO_VALUE, NO_VALUE}, {2, 3}).least == 2.0F);  // a time without values
}

TEST_CASE("A listing says the first thousand times and how many more there are, or all") {
    std::vector<OutputTime> times;
    std::vector<double> stored;
    for (int i = 0; i < 1003; ++i) {
        times.push_back({i / 3600.0});
        stored.push_back(i);
    }
    times.back() = TIME_MAXIMUM;
    stored.back() = 99999.0;
    Listing listing;
    consoleOf([&] { listing.times(times, stored, "Seconds"); });
    const std::string& text = listing.text();
    for (const char* part :
         {"Unit of time: Seconds\n", "Number of times: 1003\n", "First time: 0. h (stored as 0)\n",
          "Last time: maximums (stored as 99999)\n", " 1000  0.2775 h (stored as 999)\n", "      ... and 3 more\n"})
        CHECK_MESSAGE(holds(text, part), part);
    CHECK_FALSE(holds(text, "stored as 1000"));
    Listing whole(true);
    consoleOf([&] { whole.times(times, stored, "Seconds"); });
    CHECK(holds(whole.text(), " 1002  0.2781 h (stored as 1001)\n      1003  maximums"));
}
