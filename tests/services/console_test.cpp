#include "services/console.h"

#include "scratch_folder.h"
#include "services/files.h"
#include "testing.h"

TEST_CASE("DMESSAGE takes the level from the words before the dash, a later word overriding an earlier") {
    using Level = MessageLevel;
    const std::tuple<const char*, Level, int> rows[] = {
        {"ERROR 0251 - Could not open", Level::Error, 251},
        {"Warning - Both given", Level::Warning, 0},
        {"WARNING 0317 - ERROR in line", Level::Warning, 317},  // the rest of the message has no say
        {"Check - Tail", Level::Check, 0},
        {"WARNING 0012 CHECK 2075 - both", Level::Check, 2075},
        {"UNSTABLE 2991 - negative depth", Level::Unstable, 2991},
        {"ERROR reading data", Level::Error, 0},
        {"Finished - with ERROR", Level::None, 0},
    };
    for (const auto& [text, level, number] : rows) {
        CAPTURE(text);
        ConsoleCapture capture;
        DMESSAGE(text);
        CHECK(capture.text() == std::string(text) + "\n");
        CHECK(MESSAGE_COUNTS().byLevel[static_cast<std::size_t>(level)] == 1);
        CHECK(MESSAGE_COUNTS().lastNumber == number);
        DMESSAGERESETCOUNTERS();
        CHECK(MESSAGE_COUNTS().byLevel[static_cast<std::size_t>(level)] == 0);
    }
    CHECK(consoleOf([] { DLINE(); }) == std::string(60, '_') + "\n");
}

TEST_CASE("Questions never wait where nobody answers") {
    const auto name = [] { CHECK(ASK("Name -> ") == "a b"); };
    for (const char* typed : {"  a b \r\n", " \" a b\"\r\n", "'a b'"}) CHECK(consoleOf(name, typed) == "Name -> ");
    CHECK(consoleOf([] { ASK("Name -> "); }) ==
          "Name -> \nERROR - End of input reached while waiting for an answer.\n\nPress Enter to Close\n<stopped>");
    CHECK(consoleOf([] { CHECK(ASK("1 ") == "last"); }, "\n\"\"\n \t\nlast") == "1 1 1 1 ");  // blanks ask again
    const auto create = [] { CHECK(ASK_YES("Create?")); };
    CHECK(consoleOf(create) == "Create?\n");
    CHECK(consoleOf([] { CHECK_FALSE(ASK_YES("Create?")); }, "yonder\nNO\n") ==
          "Create? (y/n)    \"yonder\" is neither y nor n.\nCreate? (y/n) ");
    CHECK(consoleOf(create, "Yes") == "Create? (y/n) ");
    const auto inBatch = [&] {
        SET_BATCH(true);
        create();
    };
    CHECK(consoleOf(inBatch, "n\n") == "Create?\n");
    CHECK(consoleOf([] { PAUSE(); }) + consoleOf([] { PAUSE(""); }) == "Press Enter to Continue\n");
    const auto counted = [] {
        Progress count("Node: ", 9);
        count.show(5);
        count.finish(9);
    };
    CHECK(consoleOf(counted) == "Node: 9\n");
}

TEST_CASE("What is held is said behind what it waits for, and never when that stops the run") {
    const auto first = [] { REPORT("first"); };
    CHECK(consoleOf([&] {
              HOLD_CONSOLE(first);
              REPORT("held");
              DMESSAGE("WARNING - held too");
              CHECK(MESSAGE_COUNTS().byLevel[2] == 0);
              HOLD_CONSOLE([] { REPORT("second"); });
              CHECK(MESSAGE_COUNTS().byLevel[2] == 1);
              REPORT("last");
              DMESSAGE("ERROR - seen at once");
              REPORT("free");
          }) == "first\nheld\nWARNING - held too\nsecond\nlast\nERROR - seen at once\nfree\n");
    CHECK(consoleOf([&] {
              HOLD_CONSOLE([] { STOP_RUN("ERROR - lost"); });
              REPORT("of a time that never comes");
              PAUSE("");
          }) == "ERROR - lost\n\nPress Enter to Close\n<stopped>");
}

TEST_CASE("A caller's sink takes lines, severities and progress, and the stop carries its reason") {
    struct : ConsoleSink {
        void line(std::string_view text, MessageLevel level) override {
            said += std::to_string(static_cast<int>(level)) + std::string(text) + '|';
        }
        bool showsProgress() const override { return true; }
        void progress(std::string_view label, std::int64_t count, std::int64_t total) override {
            said += std::string(label) + std::to_string(count) + '/' + std::to_string(total) + '|';
        }
        std::string said;
    } sink;
    INITIALISE_FILES();
    ConsoleSink* const before = SET_CONSOLE_SINK(&sink);
    Progress("Cell: ", 7).show(3);
    std::string reason;
    int status = 0;
    try {
        DMESSAGE("ERROR - First");
        EXITS();
    } catch (const std::runtime_error& stopped) {
        reason = stopped.what();
    }
    try {
        CHECK(ASK_YES("Go on?"));  // nobody answers, and nothing is waited for
        OPEN_FILE("no/such.2dm", "I ", "2dm");
    } catch (const RunStopped& stopped) {
        reason += std::string("; ") + stopped.what();
        status = stopped.status;
    }
    CHECK(SET_CONSOLE_SINK(before) == &sink);
    INITIALISE_CONSOLE();
    CHECK(reason == "ERROR - First; ERROR - File no/such.2dm does not exist.");
    CHECK(status == STATUS_STOPPED);
    CHECK(sink.said == "Cell: 3/7|1ERROR - First|0|0Go on?|1ERROR - File no/such.2dm does not exist.|0|");
}

TEST_CASE("EXITS closes the files once, tells lost output, and a success is none then") {
    const ScratchFolder folder;
    const int first = OPEN_FILE(folder.name("a.txt"), "O ", "txt");
    CHECK(WRITE_BYTES(first, "torn"));
    const std::string end = "\nPress Enter to Close\n<stopped>";
    CHECK(consoleOf([] { EXITS(); }) == end);
    CHECK(std::filesystem::is_empty(folder.name("")));
    const int second = OPEN_FILE(folder.write("a.txt", "kept"), "I ", "txt");
    CHECK(consoleOf([] { EXITS(); }) == end);
    CHECK(FILE_LENGTH(second) == 4);  // still open

    if (!std::filesystem::exists("/dev/full")) return;
    INITIALISE_FILES();
    CHECK(WRITE_BYTES(OPEN_FILE("/dev/full", "O ", "asc"), "lost"));
    int status = -1;
    const std::string text = consoleOf([&] {
        try {
            EXITS(STATUS_DONE);
        } catch (const RunStopped& stopped) {
            status = stopped.status;
        }
    });
    CHECK(text ==
          "Unable to close file.\nERROR - Could not write /dev/full: No space left on device. The file is "
          "incomplete.\n\nPress Enter to Close\n");
    CHECK(status == STATUS_STOPPED);
}
