#include "services/files.h"

#include "platform/shared_library.h"
#include "run_control/file_questions.h"
#include "scratch_folder.h"
#include "services/file_table.h"
#include "testing.h"

namespace {
std::vector<std::string> linesOf(const std::string& name) {
    const int file = OPEN_FILE(name, "I ", "txt");
    std::vector<std::string> lines;
    std::string line;
    while (READLINE(file, line) == LineStatus::Read) lines.push_back(line);
    CLOSE_FILE(file);
    return lines;
}
using Lines = std::vector<std::string>;
}  // namespace

TEST_CASE("Lines end in LF or CR LF, and may span blocks") {
    const ScratchFolder folder;
    CHECK(linesOf(folder.write("a.txt", " a\r\n\r\n\tb \n\nlast")) == Lines{"a", "", "b ", "", "last"});
    CHECK(linesOf(folder.write("a.txt", "")).empty());
    CHECK(linesOf(folder.write("a.txt", "\n")) == Lines{""});
    const std::string filler = std::string(99, 'x') + "\n";
    std::string text;
    while (text.size() + filler.size() <= FILE_BLOCK_SIZE) text += filler;
    const std::size_t before = text.size() / filler.size();
    const std::string tail(FILE_BLOCK_SIZE - text.size() - 1, 'y');  // its CR ends the block, its LF begins the next
    for (const char* ending : {"\r\nz", "y\r\nz", "\n\r\nz"}) {
        const Lines lines = linesOf(folder.write("a.txt", text + tail + ending));
        REQUIRE(lines.size() >= before + 2);
        CHECK(lines[before].substr(0, tail.size()) == tail);
        CHECK(lines[before].find('\r') == std::string::npos);
        CHECK(lines.back() == "z");
    }
    const Lines cut = linesOf(folder.write("a.txt", std::string(3 * FILE_BLOCK_SIZE, 'q') + "\nnext\n"));
    REQUIRE(cut.size() == 2);
    CHECK((cut[0].size() == LONGEST_LINE && cut[1] == "next"));
}

TEST_CASE("A line stays readable while other files are opened") {
    const ScratchFolder folder;
    const int file = OPEN_FILE(folder.write("a.txt", std::string(FILE_BLOCK_SIZE - 3, 'x') + "\nabcd\n"), "I ", "txt");
    std::string_view line;
    REQUIRE(READ_LINE(file, line) == LineStatus::Read);
    REQUIRE(READ_LINE(file, line) == LineStatus::Read);  // short, and across the blocks
    for (int i = 0; i < 40; ++i) OPEN_FILE(folder.name("a.txt"), "I ", "txt");
    CHECK(line == "abcd");
}

TEST_CASE("Bytes are read and skipped across blocks, and outputs are read back") {
    const ScratchFolder folder;
    std::string bytes(3 * FILE_BLOCK_SIZE + 5, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i % 251);
    const auto check = [&](int file, std::size_t at, std::size_t count) {
        CAPTURE(at);
        std::string got(count, '?');
        REQUIRE(SEEK_FILE(file, static_cast<std::int64_t>(at)));
        const std::size_t expected = at < bytes.size() ? std::min(count, bytes.size() - at) : 0;
        CHECK(READ_BYTES(file, got.data(), count) == static_cast<std::int64_t>(expected));
        CHECK(got.substr(0, expected) == bytes.substr(std::min(at, bytes.size()), expected));
        CHECK(FILE_POSITION(file) == static_cast<std::int64_t>(at + expected));
    };
    const int in = OPEN_FILE(folder.write("a.dat", bytes), "I ", "dat");
    const int out = OPEN_FILE(folder.name("b.dat"), "O ", "dat");
    CHECK(WRITE_BYTES(out, std::string_view(bytes).substr(0, 10)));
    CHECK(WRITE_BYTES(out, std::string_view(bytes).substr(10)));
    for (const int file : {in, out})
        for (const std::size_t at : {std::size_t{0}, std::size_t{7}, FILE_BLOCK_SIZE - 2, 2 * FILE_BLOCK_SIZE,
                                     std::size_t{3}, bytes.size() - 4, bytes.size() + 9})
            for (const std::size_t count : {std::size_t{5}, FILE_BLOCK_SIZE + 1}) check(file, at, count);
    REQUIRE(SEEK_FILE(out, 4));
    CHECK(WRITE_BYTES(out, "ABC"));
    bytes.replace(4, 3, "ABC");
    check(out, 0, 20);
    CHECK_FALSE(SEEK_FILE(in, -1));
    CLOSE_FILE(out);
    CHECK(folder.read("b.dat") == bytes);
    CLOSE_FILE(in);
}

TEST_CASE("A full disk is told, whichever call meets it") {
    if (!std::filesystem::exists("/dev/full")) return;
    const std::string error =
        "ERROR - Could not write /dev/full: No space left on device. The file is incomplete.\n\nPress Enter to "
        "Close\n<stopped>";
    const std::string large(2 * FILE_BLOCK_SIZE, 'x');
    INITIALISE_FILES();
    int file = OPEN_FILE("/dev/full", "O ", "asc");
    CHECK(consoleOf([&] { WRITE_OR_STOP(file, "small"); }) == "");  // still buffered
    CHECK(consoleOf([&] { CLOSE_FILE(file); }) == "Unable to close file.\n" + error);
    file = OPEN_FILE("/dev/full", "O ", "asc");
    // said once, not again when the run closes its files
    CHECK(consoleOf([&] { WRITE_OR_STOP(file, large); }) == error);
    INITIALISE_FILES();
    file = OPEN_FILE("/dev/full", "O ", "asc");
    CHECK_FALSE(WRITE_BYTES(file, large));
    CHECK_FALSE(TRY_CLOSE_FILE(file));  // a failed write is not forgotten
}

TEST_CASE("A thousand files can be open, and the next stops the run") {
    const ScratchFolder folder;
    const std::string name = folder.write("a.txt", "");
    for (int i = 1; i <= MOST_OPEN_FILES; ++i) REQUIRE(OPEN_FILE(name, "I ", "txt") == i);
    CHECK(consoleOf([&] { OPEN_FILE(name, "I ", "txt"); }) == "No free file numbers.\n<stopped>");
    CLOSE_FILE(17);
    CHECK(OPEN_FILE(name, "I ", "txt") == 17);  // the lowest free one
    CHECK(consoleOf([] { GETNAM(1001); }) == "Invalid file number - GETNAM\n<stopped>");
    CHECK(consoleOf([] { OPENER(9, "x", "I "); }) == "Incorrect file number - OPENER\n<stopped>");
    CHECK(consoleOf([] { OPENER(5, "x", "I "); }) == "File already opened - OPENER\n<stopped>");
}

TEST_CASE("Files that are not there are asked for, folders are created or refused") {
    const ScratchFolder folder;
    const std::string there = folder.write("there.dat", "");
    const std::string missing = folder.name("missing.dat");
    const std::string deep = folder.name("new/er/x.asc");
    // whoever sets no questions gets a reason at once
    const auto stopped = [](const std::string& error) { return error + "\n\nPress Enter to Close\n<stopped>"; };
    CHECK(consoleOf([&] { OPEN_FILE(missing, "I ", "dat"); }, there) ==
          stopped("ERROR - File " + missing + " does not exist."));
    CHECK(consoleOf([&] { OPEN_FILE(deep, "O ", "asc"); }, "y\n").starts_with("Can't open:\n"));
    CHECK_FALSE(std::filesystem::exists(folder.name("new")));
    SET_FILE_QUESTIONS(CONSOLE_FILE_QUESTIONS());
    const std::string asked = "does not exist.\n   Looked for missing.dat in folder " +
                              folder.name("").substr(0, folder.name("").size() - 1) +
                              "\nWhat is the dat file name? FILE and/or path also missing does not exist.\n   Looked "
                              "for also missing in folder ";
    const std::string said =
        consoleOf([&] { CHECK(GETNAM(OPEN_FILE(missing, "I ", "dat")) == there); }, "also missing\n'" + there + "'\n");
    CHECK(said.starts_with("FILE and/or path " + missing + " " + asked));
    CHECK(said.ends_with("\nWhat is the dat file name? "));
    CHECK(consoleOf([] {
              OPEN_FILE("  ", "I ", "dat");
          }).starts_with("Empty filename specified.  Bailing out.  Please contact the maintainers"));
    const std::string noFile = folder.name("folder");
    std::filesystem::create_directory(noFile);
    for (const char* mode : {"I ", "O "})
        CHECK(consoleOf([&] { OPEN_FILE(noFile, mode, "dat"); }) ==
              stopped("ERROR - " + noFile + " is a folder, not a file."));
    CHECK(consoleOf([&] {
              CLOSE_FILE(OPEN_FILE(deep, "O ", "asc"));
          }).ends_with("or press Yes to have the folder created for you.\n"));
    CHECK(std::filesystem::exists(deep));
    const std::string refused = consoleOf([&] { OPEN_FILE(folder.name("no/x.asc"), "O ", "asc"); }, "n\n");
    CHECK(stops(refused, "(y/n) Can't open:\n"));
    // a file in the place of the folder
    CHECK(consoleOf([&] { OPEN_FILE(there + "/x.asc", "O ", "asc"); }).ends_with("<stopped>"));
    const int open = OPEN_FILE(folder.name("o.asc"), "O ", "asc");
    CHECK(consoleOf([&] { OPEN_FILE(folder.name("O.asc"), "O ", "asc"); }, "n\n")
              .starts_with(folder.name("O.asc") + " is already open.  Close it?"));
    CLOSE_FILE(open);
}

TEST_CASE("A file of an earlier run is said to be replaced, one of this run is not") {
    const ScratchFolder folder;
    const std::string name = folder.write("x.asc", "");
    const auto write = [&] {
        BEGIN_OUTPUT(name);
        CLOSE_FILE(OPEN_FILE(name, "O ", "asc"));
        FINISH_OUTPUT(name);
    };
    CHECK(consoleOf(write) == "Check - Replacing " + name + ".\nWrote " + name + "\n");
    CHECK(consoleOf(write) == "Wrote " + name + "\n");
    CHECK(OUTPUTS_WRITTEN() == 2);
    INITIALISE_FILES();
    CHECK(OUTPUTS_WRITTEN() == 0);
}

namespace {
void writeFile(const std::string& name, const std::string& kind) {
    const int file = OPEN_FILE(name, "O ", kind);
    WRITE_OR_STOP(file, "new " + kind);
    CLOSE_FILE(file);
}
std::size_t filesIn(const TemporaryFolder& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.name("")), {}));
}
}  // namespace

TEST_CASE("A set comes to its place as one, and the earlier one comes back when a file of it cannot be moved") {
    for (const bool fails : {false, true}) {
        const ScratchFolder folder;
        for (const char* name : {"x.shp", "x.dbf"}) folder.write(name, "old");
        std::filesystem::permissions(folder.name("x.dbf"), std::filesystem::perms(0640));
        consoleOf([&] {
            BEGIN_OUTPUT(folder.name("x.y.csv"));  // under way beside it, and of a name that begins alike
            BEGIN_OUTPUT(folder.name("x.shp"));
        });
        for (const char* kind : {"shp", "shx", "dbf"}) writeFile(folder.name("x." + std::string(kind)), kind);
        writeFile(folder.name("x.y.csv"), "csv");
        CHECK((folder.read("x.shp") == "old" && folder.read("x.dbf") == "old" && filesIn(folder) == 6));
        for (const auto& file : std::filesystem::directory_iterator(folder.name("")))
            if (fails && file.path().string().ends_with(".part.shx")) std::filesystem::remove(file.path());
        std::string said = consoleOf([&] { FINISH_OUTPUT(folder.name("x.shp")); });
        CHECK(folder.read("x.shp") == (fails ? "old" : "new shp"));
        CHECK(folder.read("x.dbf") == (fails ? "old" : "new dbf"));
        CHECK(folder.read("x.shx") == (fails ? "" : "new shx"));
        const auto permissions = std::filesystem::status(folder.name("x.dbf")).permissions();
        CHECK((ON_WINDOWS || permissions == std::filesystem::perms(0640)));
        if (fails)
            CHECK(said.starts_with("ERROR - Could not move what was written to " + folder.name("x.shx") +
                                   ": No such file"));
        else said = consoleOf([&] { FINISH_OUTPUT(folder.name("x.y.csv")); });
        CHECK(filesIn(folder) == (fails ? 2 : 4));  // nothing waits beside them
        CHECK(folder.read("x.y.csv") == (fails ? "" : "new csv"));
    }
}

TEST_CASE("What a library writes under the working name is moved with what it puts beside it, or removed") {
    for (const bool finishes : {true, false}) {
        const ScratchFolder folder;
        BEGIN_OUTPUT(folder.name("x.tif"));
        const std::string working = WORKING_NAME(folder.name("x.tif"), LibraryMakes::OverOld);
        CHECK((working.starts_with(folder.name("x.")) && working.ends_with(".part.tif") && filesIn(folder) == 0));
        std::ofstream(working) << "picture";
        std::ofstream(working + ".aux.xml") << "statistics";
        std::ofstream(replaced(working, ".tif", ".tfw")) << "place";
        consoleOf([&] {
            if (finishes) FINISH_OUTPUT(folder.name("x.tif"));
            else STOP_RUN("ERROR - None.");
        });
        CHECK(folder.read("x.tif") == (finishes ? "picture" : ""));
        CHECK(folder.read("x.tif.aux.xml") == (finishes ? "statistics" : ""));
        CHECK(folder.read("x.tfw") == (finishes ? "place" : ""));
        CHECK(filesIn(folder) == (finishes ? 3 : 0));
    }
}

TEST_CASE("A file is found by its name, with either separator, else in any letter case") {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.name("sub"));
    const std::string file = folder.write("sub/Header.PRJ", "");
    CHECK(FIND_FILE(file) == file);
    // Where the disk takes both for one name, it is the one that was asked for.
    for (const std::string& other : {folder.name("sub/HEADER.prj"), folder.name("sub\\header.prj")})
        CHECK(FIND_FILE(other) == (ON_WINDOWS ? other : file));
    CHECK_FALSE(FIND_FILE(folder.name("sub")));
    CHECK_FALSE(FIND_FILE(folder.name("sub/Header.pr")));
    CHECK_FALSE(FIND_FILE(folder.name("none/Header.prj")));
    CHECK_FALSE(FIND_FILE(""));
    folder.write("sub/header.prj", "");
    CHECK(FIND_FILE(folder.name("sub/header.prj")) == folder.name("sub/header.prj"));  // the exact name comes first
}

TEST_CASE("A name once used stays in use, however it is written") {
    const ScratchFolder folder;
    CHECK_FALSE(NAME_IN_USE(folder.name("x.asc")));
    CLOSE_FILE(OPEN_FILE(folder.name("x.asc"), "O ", "asc"));
    NOTE_FILE_USED(folder.name("x.xmdf"));
    for (const char* name : {"x.asc", "X.ASC", "./sub/../x.asc", "x.XMDF"}) CHECK(NAME_IN_USE(folder.name(name)));
    CHECK_FALSE(NAME_IN_USE(folder.name("x_2.asc")));
    INITIALISE_FILES();
    CHECK_FALSE(NAME_IN_USE(folder.name("x.asc")));
}
