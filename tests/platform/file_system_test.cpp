#include "platform/file_system.h"

#include "platform/processors.h"
#include "platform/shared_library.h"
#include "scratch_folder.h"
#include "services/files.h"
#include "testing.h"

#ifdef _WIN32
#include <share.h>
#endif

namespace {
const std::string WORDS =
    "Gr\xC3\xB6\xC3\x9F"
    "e \xE2\x80\x93 \xE5\xA4\xA7\xF0\x9F\x8C\x8A";  // code page, dash, beyond 16 bits
}

TEST_CASE("Names hold letters of every script, in folders and files, read and written") {
    const TemporaryFolder folder;
    const std::string below = folder.name("") + WORDS + "/" + WORDS;
    const std::string file = below + "/" + WORDS + ".txt";
    INITIALISE_FILES();
    REQUIRE_FALSE(MAKE_FOLDERS(below));
    const int out = OPEN_FILE(file, "O ", "txt");
    WRITE_OR_STOP(out, "text\n");
    CLOSE_FILE(out);
    CHECK(KIND_OF_FILE(file) == FileKind::File);
    CHECK(KIND_OF_FILE(below) == FileKind::Folder);
    CHECK(NAMES_IN_FOLDER(below) == std::vector<std::string>{WORDS + ".txt"});
    CHECK(NAME_OF(PATH_OF(file).filename()) == WORDS + ".txt");
    CHECK(FIND_FILE(below + "/" + WORDS + ".TXT").has_value());
    std::string line;
    const int in = OPEN_FILE(file, "I ", "txt");
    CHECK(FILE_LENGTH(in) == 5);
    CHECK(READLINE(in, line) == LineStatus::Read);
    CHECK(line == "text");
    CLOSE_FILE(in);
    // an output may differ from an input in the case of any letter, where the disk takes both for one
    CHECK(NAME_IN_USE(below + "/GR\xC3\x96\xC3\x9F" + WORDS.substr(6) + ".TXT") == ON_WINDOWS);
    CHECK(NAME_IN_USE(below + "/../" + WORDS + "/" + WORDS + ".TXT"));
}

TEST_CASE("What a shell has opened for the program has no name to put another file under") {
    CHECK((ON_WINDOWS || (LINK_TARGET("/dev/fd/0").empty() && LINK_TARGET("/proc/self/fd/0").empty())));
}

TEST_CASE("Names may be longer than 260 characters") {
    const ScratchFolder folder;
    std::string deep = folder.name("long");
    for (int i = 0; i < 6; ++i) deep += "/" + std::string(60, static_cast<char>('a' + i));
    const std::string file = deep + "/x.asc";
    REQUIRE_FALSE(MAKE_FOLDERS(deep));
    CLOSE_FILE(OPEN_FILE(file, "O ", "asc"));
    CHECK(KIND_OF_FILE(file) == FileKind::File);
    CHECK(NAMES_IN_FOLDER(deep) == std::vector<std::string>{"x.asc"});
    CHECK(FIND_FILE(deep + "/X.ASC").has_value());
    CHECK(NAME_IN_USE(deep + "/../" + std::string(60, 'f') + "/X.asc"));
    CHECK(ABSOLUTE_NAME(deep + "/../y.asc").ends_with(std::string(60, 'e') + (ON_WINDOWS ? "\\" : "/") + "y.asc"));
    const std::error_code refused = MAKE_FOLDERS(file + "/below");
    CHECK(refused == std::errc::not_a_directory);
}

TEST_CASE("A read at a place leaves where the stream stands") {
    const ScratchFolder folder;
    std::FILE* const stream = OPEN_STREAM(folder.write("x", "0123456789"), "rb");
    REQUIRE(stream != nullptr);
    std::setvbuf(stream, nullptr, _IONBF, 0);
    std::string read(2, ' ');
    CHECK((READ_FROM(stream, 6, read.data(), 2) && read == "67"));
    CHECK(std::getc(stream) == '0');
    CHECK_FALSE(READ_FROM(stream, 9, read.data(), 2));
    std::fclose(stream);
}

#ifdef _WIN32
TEST_CASE("A file that another program has locked is refused by its name") {
    const ScratchFolder folder;
    const std::string name = folder.write("locked.asc", "text");
    std::FILE* const other = _fsopen(name.c_str(), "rb", _SH_DENYRW);
    REQUIRE(other != nullptr);
    const std::string said = consoleOf([&] { OPEN_FILE(name, "O ", "asc"); });
    CHECK(holds(said, "ERROR - Could not open " + name));
    std::fclose(other);
    CHECK(folder.read("locked.asc") == "text");
}
#endif
