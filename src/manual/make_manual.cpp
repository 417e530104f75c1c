// Writes the manual's page or the completion for bash, both made of the switch table and the usage text. Run while the
// program is built.
#include "manual/bash_completion.h"
#include "manual/man_page.h"

#include <cstdio>
#include <fstream>
#include <string>

int main(int argc, char* argv[]) {
    const std::string asked = argc == 3 ? argv[1] : "";
    if (asked != "man" && asked != "bash") {
        std::fputs("make_manual man|bash <file>\n", stderr);
        return 2;
    }
    std::ofstream file(argv[2], std::ios::binary);
    file << (asked == "man" ? MAN_PAGE() : BASH_COMPLETION());
    file.close();
    if (!file) std::fprintf(stderr, "ERROR - Could not write all of %s\n", argv[2]);
    return file ? 0 : 1;
}
