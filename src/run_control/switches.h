// The switches of the command line, as a table in the order in which they are tried.
#pragma once

#include "services/options.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One switch as it was found on the command line.
struct SwitchArgument {
    std::string argument;      ///< as typed, for messages
    std::string_view keyword;  ///< of the row it matched
    std::string text;          ///< without its dash: "grid5"
    std::string behind;        ///< what is glued to the keyword: "5"
    std::string next;          ///< the following argument, whether the switch takes it or not; blank when there is none
};

struct Switch {
    std::string_view keyword;                           ///< matches the leading characters, letter case ignored
    void (*apply)(RunOptions&, const SwitchArgument&);  ///< may stop the run
    /// the following argument is its value, whatever that begins with
    bool takesNext = false;
    bool wholeWord = false;  ///< the text is the keyword and nothing more: a path may begin with "/dif",
                             ///< and what takes the next argument must not swallow it by accident
};

/// The first row whose keyword the text (without its dash) begins with; the output formats without a row of their own
/// are tried last. Nothing for an unknown switch.
std::optional<Switch> FIND_SWITCH(std::string_view text);

/// The switch as outputs tell it ("-grid5", "-like dem.tif", files without their folder); blank for one that leaves the
/// values as they are: console, names, and which other times are converted.
std::string RESULT_SWITCH(const Switch& row, const SwitchArgument& given);
/// Every switch in the order in which they are tried.
std::vector<Switch> ALL_SWITCHES();
