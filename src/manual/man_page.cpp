#include "manual/man_page.h"

#include "run_control/usage.h"
#include "run_control/usage_entries.h"
#include "services/version.h"
#include "text_utils/text.h"

#include <vector>

namespace {

constexpr std::string_view EXAMPLES = "EXAMPLES:";

/// Dashes are those that are typed, and no line begins with what would be a macro.
std::string roff(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') out += "\\e";
        else if (c == '-') out += "\\-";
        else if (c == '\'') out += "\\(aq";
        else out += c;
    }
    return out.starts_with('.') ? "\\&" + out : out;
}

/// Quotes inside a macro's argument are told from those around it.
std::string argument(std::string_view text) {
    std::string out;
    for (const char c : roff(text)) out += c == '"' ? std::string("\\(dq") : std::string(1, c);
    return '"' + out + '"';
}

std::string description() {
    std::string out;
    for (const std::string_view line : USAGE_LINES()) {
        if (line == LAST_OF_DESCRIPTION) break;
        if (!line.empty() && !out.empty())
            out += (line.starts_with(' ') ? ".br\n" : ".PP\n") + roff(TRIMMED(line)) + '\n';
        else if (!line.empty()) out = "\n";  // the first line is the title
    }
    return out.substr(1);
}

std::string title(std::string_view section) {
    return std::string(section.ends_with(':') ? section.substr(0, section.size() - 1) : section);
}

std::string continued(const UsageEntry& entry) {
    std::string out;
    for (std::size_t i = 1; i < entry.lines.size(); ++i) out += ".br\n" + roff(TRIMMED(entry.lines[i])) + '\n';
    return out;
}

std::string options() {
    std::string out;
    std::string_view section;
    for (const UsageEntry& entry : USAGE_ENTRIES()) {
        if (entry.section == EXAMPLES) continue;
        if (entry.section != section) out += ".SS " + argument(title(entry.section)) + '\n';
        section = entry.section;
        const UsageHead head = USAGE_HEAD(entry.lines.front());
        const std::string text = head.text.empty() ? std::string() : roff(head.text) + '\n';
        if (head.keywords.empty()) out += ".PP\n" + text + continued(entry);
        else out += ".TP\n.B " + argument(head.shown) + '\n' + text + continued(entry);
    }
    return out;
}

std::string examples() {
    std::string out;
    for (const UsageEntry& entry : USAGE_ENTRIES())
        if (entry.section == EXAMPLES)
            out += ".TP\n.B " + argument(TRIMMED(entry.lines.front())) + '\n' + continued(entry);
    return out;
}

}  // namespace

std::string MAN_PAGE() {
    const std::string head = ".TH VORANT_TO_GIS 1 \"\" \"VORANT_to_GIS " + std::string(VERSION_TEXT) +
                             "\" \"User Commands\"\n.nh\n.ad l\n.SH NAME\nVORANT_to_GIS \\- meshes and results of "
                             "a 2D flood model as grids and layers of a GIS\n";
    return head +
           ".SH SYNOPSIS\n.B VORANT_to_GIS\n[\\fIswitches\\fR] \\fIinput\\fR\n.br\n.B VORANT_to_GIS \\-help\n"
           "[\\fIword\\fR]\n.SH DESCRIPTION\n" +
           description() +
           ".PP\nThe input is the argument that is no switch. A switch begins with a dash; letter case does not "
           "matter, and a value follows it without a blank unless one is shown.\n.SH OPTIONS\n" +
           options() +
           ".SH EXIT STATUS\n.TP\n.B 0\nFinished.\n.TP\n.B 1\nStopped by an error, which the last line that begins "
           "with "
           "ERROR (of some switches: Error) tells.\n.TP\n.B 2\nNo input or no output format: the usage text was "
           "printed.\n.TP\n.B 3\nFinished, but not "
           "everything "
           "asked for could be converted.\n.SH EXAMPLES\nThe program is named here as on Windows.\n" +
           examples() + ".SH SEE ALSO\nThe guide and the README in\n.IR /usr/share/doc/vorant\\-to\\-gis .\n";
}
