#include "manual/bash_completion.h"

#include "run_control/help.h"
#include "run_control/switches.h"
#include "run_control/usage_entries.h"
#include "text_utils/text.h"

#include <vector>

namespace {

constexpr std::string_view TAKES_FILES[] = {"file", "raster", "coordinate system"};  // words of the value shown

struct Shown {
    std::string name;    ///< "Folder": in the letter case of the usage text
    bool glued = false;  ///< a value follows without a blank
    bool file = false;   ///< a file's name follows
    bool folder = false;
};

Shown shownOf(const Switch& row, const std::vector<UsageEntry>& entries) {
    Shown shown{std::string(row.keyword), false, false, false};
    for (const UsageEntry& entry : entries) {
        const UsageHead head = USAGE_HEAD(entry.lines.front());
        for (const std::string& keyword : head.keywords) {
            if (!ASAME(keyword, row.keyword)) continue;
            shown.name = keyword;
            for (const std::string_view word : TAKES_FILES)
                shown.file = shown.file || (row.takesNext && FLAGEXISTS(head.shown, word));
            shown.folder = row.takesNext && FLAGEXISTS(head.shown, "folder");
            shown.glued = !row.takesNext && head.shown.find_first_of("<\"") != std::string_view::npos;
        }
    }
    return shown;
}

}  // namespace

std::string BASH_COMPLETION() {
    const std::vector<UsageEntry> entries = USAGE_ENTRIES();
    std::string all, glued, files, folders, words;
    for (const Switch& row : ALL_SWITCHES()) {
        const Shown shown = shownOf(row, entries);
        const std::string lower = LOWERCASE(row.keyword);
        all += " -" + shown.name;
        if (shown.glued) glued += "|-" + shown.name;
        if (row.takesNext) (shown.file ? files : shown.folder ? folders : words) += "|-" + lower;
    }
    for (const std::string_view word : TELLING_SWITCHES())
        if (word.size() > 1) all += " -" + std::string(word);
    return "# Completion of VORANT_to_GIS for bash.\n"
           "_VORANT_to_GIS() {\n"
           "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} names=\n"
           "    COMPREPLY=()\n"
           "    case ${prev,,} in\n"
           "        " +
           files.substr(files.empty() ? 0 : 1) +
           ") names='*' ;;\n"
           "        " +
           folders.substr(folders.empty() ? 0 : 1) +
           ") names=/ ;;\n"  // of no file
           "        " +
           words.substr(words.empty() ? 0 : 1) +
           ") return ;;\n"
           "        *) [[ $cur == -* ]] || names='*.@(2dm|dat|xmdf|h5|tab)' ;;\n"
           "    esac\n"
           "    local IFS=$'\\n' name\n"
           "    if [ -n \"$names\" ]; then\n"
           "        for name in $(compgen -f -- \"$cur\"); do\n"
           "            [[ -d $name || ${name,,} == $names ]] && COMPREPLY+=(\"$name\")\n"
           "        done\n"
           "        compopt -o filenames 2>/dev/null\n"
           "        return\n"
           "    fi\n"
           "    IFS=' '\n"
           "    for name in" +
           all +
           "; do\n"
           "        [[ ${name,,} == \"${cur,,}\"* ]] && COMPREPLY+=(\"$name\")\n"
           "    done\n"
           "    [ ${#COMPREPLY[@]} -eq 1 ] && [[ ${COMPREPLY[0]} == @(" +
           glued.substr(1) +
           ") ]] && compopt -o nospace 2>/dev/null\n"
           "    return 0\n"
           "}\n"
           "complete -F _VORANT_to_GIS VORANT_to_GIS\n";
}
