// How one dataset is read for the time that the command line asks for.
#pragma once

#include "inputs/xmdf_items.h"
#include "inputs/xmdf_messages.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

struct RunOptions;

/// The time that is wanted. A time of 99999, -99999 or 99999.1 given with -t is the same as -max, -min or -tmax.
enum class XmdfWanted : std::uint8_t { NotGiven, Maximum, Minimum, TimeOfPeak, Time, AllTimes };
XmdfWanted XMDF_WANTED(const RunOptions& options);

/// "Water Level" -> "Time of Peak h", "Vector Velocity" -> "Time of Peak V"; blank for what has no time of peak.
std::string XMDF_PEAK_OF(std::string_view type);

/// Equal for the datasets of one quantity in /Maximums/, /Temporal/ and /Minimums/.
std::string XMDF_QUANTITY_KEY(std::string_view path);

/// Collects the items of one file. Each add routine returns false, and adds nothing, where there is no such output;
/// missing() says what is. A dataset that cannot be read is there, though: it is noted among the unreadable ones.
class XmdfChoice {
public:
    XmdfChoice(XmdfEntry& entry, std::size_t file, const RunOptions& options, XmdfWanted wanted)
        : entry_(entry), file_(file), options_(options), wanted_(wanted) {}

    /// From the datasets that FIND_XMDF_TYPE noted. Stops the run when -t finds no time within the tolerance.
    bool addFound(XmdfKind kind);
    /// A dataset that was chosen itself. One of /Temporal/ stands for its stored maximums and minimums as well; without
    /// a time switch all times of a -path or -Folder dataset are taken. alone: it is the only one, so that a time out
    /// of tolerance stops the run.
    bool addDataset(XmdfKind kind, std::int32_t number, bool alone);
    /// One of all datasets of the file: taken only for what it holds itself, and for maximums where none are stored.
    bool addOfAll(XmdfKind kind, std::int32_t number);
    /// True for a quantity whose time of peak has been taken, where that is wanted.
    bool holdsPeakOf(std::string_view path) const;

    /// What the last dataset refused lacks: "no minimums".
    const std::string& missing() const { return missing_; }
    XmdfEntry& entry() { return entry_; }
    bool empty() const { return items_.empty() && unreadable_.empty(); }
    const std::vector<XmdfItem>& items() const { return items_; }
    const std::map<std::string, XmdfUnreadable>& unreadable() const { return unreadable_; }  ///< by path
    std::vector<XmdfItem> take() { return std::move(items_); }

private:
    bool lacks(std::string what);
    bool readable(const std::string& path, XmdfFacts& facts);
    bool add(XmdfKind kind, std::int32_t number, XmdfRead read);
    bool add(XmdfKind kind, std::int32_t number, XmdfRead read, XmdfFacts facts, std::int32_t step = 0);
    bool addStored(XmdfKind kind, std::int32_t number);
    bool addMaximum(XmdfKind kind, std::int32_t stored, std::int32_t temporal);
    bool addPeak(std::string_view quantity);
    bool addAllTimes(XmdfKind kind, std::int32_t number);
    bool addClosestTime(XmdfKind kind, std::int32_t number, bool stopsRun);
    bool addWithoutTime(XmdfKind kind, std::int32_t number);
    void warnOfNoTime();

    XmdfEntry& entry_;
    std::size_t file_;
    const RunOptions& options_;
    XmdfWanted wanted_;
    std::vector<XmdfItem> items_;
    std::map<std::string, XmdfUnreadable> unreadable_;
    std::string missing_;
    bool warned_ = false;
};
