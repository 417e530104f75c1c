// The datasets of a file, found without recursion: nesting costs an open group a level, never the call stack.
#include "xmdf/h5_text.h"
#include "xmdf/xmdf_failure.h"
#include "xmdf/xmdf_state.h"

#include <algorithm>
#include <array>
#include <new>
#include <set>

namespace {

struct Link {
    std::string name;
    H5L_type_t type;
};

/// One group on the way down: its links in name order, and the next to look at.
struct Level {
    H5Group group;
    std::vector<Link> links;
    std::size_t next = 0;
    std::size_t pathLength = 0;  ///< of the path to this group
};

#if H5_VERSION_GE(1, 12, 0)
using ObjectMark = std::array<std::uint8_t, H5O_MAX_TOKEN_SIZE>;
bool describeObject(hid_t group, const char* name, H5O_type_t& type, ObjectMark& mark) {
    H5O_info2_t info{};
    if (H5Oget_info_by_name3(group, name, &info, H5O_INFO_BASIC, H5P_DEFAULT) < 0) return false;
    std::copy(std::begin(info.token.__data), std::end(info.token.__data), mark.begin());
    type = info.type;
    return true;
}
#else
using ObjectMark = haddr_t;
bool describeObject(hid_t group, const char* name, H5O_type_t& type, ObjectMark& mark) {
    H5O_info_t info{};
    if (H5Oget_info_by_name2(group, name, &info, H5O_INFO_BASIC, H5P_DEFAULT) < 0) return false;
    mark = info.addr;
    type = info.type;
    return true;
}
#endif

/// Called by the library, so that nothing may be thrown through it.
herr_t keepLink(hid_t, const char* name, const H5L_info_t* info, void* links) {
    try {
        static_cast<std::vector<Link>*>(links)->push_back({name, info->type});
        return 0;
    } catch (const std::bad_alloc&) {
        return -1;
    }
}

class Walk {
public:
    explicit Walk(XmdfFileState& file) : file_(file) {}

    void run() {
        H5O_type_t type{};
        ObjectMark root{};
        if (!describeObject(file_.file.id(), "/", type, root)) xmdfFailed(reason("/"));
        met_.insert(root);
        if (!enter(file_.file.id(), "/")) xmdfFailed(reason("/"));
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (level.next == level.links.size()) {
                levels_.pop_back();
                continue;
            }
            const Link& link = level.links[level.next++];
            path_.resize(level.pathLength);
            path_ += "/" + link.name;
            if (!follow(level.group.id(), link)) file_.unreadable.push_back(reason(path_));
        }
    }

private:
    std::string reason(const std::string& path) const {
        return "\"" + file_.name + "\": " + path + " could not be read" + h5Reason();
    }
    void skip(std::string_view what) {
        file_.skipped.push_back("Warning - " + std::string(what) + " skipped in \"" + file_.name + "\": " + path_);
    }

    bool follow(hid_t group, const Link& link) {
        if (link.type == H5L_TYPE_HARD) return meetObject(group, link.name.c_str());
        if (link.type != H5L_TYPE_SOFT) skip("External link");
        // What a soft link leads to is listed under its own name.
        else if (!h5HasMember(group, link.name.c_str())) skip("Dangling link");
        return true;
    }

    bool meetObject(hid_t group, const char* name) {
        H5O_type_t type{};
        ObjectMark mark{};
        if (!describeObject(group, name, type, mark)) return false;
        return type != H5O_TYPE_GROUP || !met_.insert(mark).second || enter(group, name);
    }

    /// Notes a dataset; goes down into any other group.
    bool enter(hid_t parent, const char* name) {
        H5Group group(H5Gopen2(parent, name, H5P_DEFAULT));
        if (!group.valid()) return false;
        switch (xmdfGroupKind(group.id())) {
            case XmdfGroupKind::Scalar: file_.scalarPaths.push_back(path_); return true;
            case XmdfGroupKind::Vector: file_.vectorPaths.push_back(path_); return true;
            case XmdfGroupKind::Folder: break;
        }
        if (H5Aexists(group.id(), "Grouptype") <= 0 && h5HasMember(group.id(), "Values"))
            skip("Group of values without a Grouptype");
        Level level{std::move(group), {}, 0, path_.size()};
        hsize_t first = 0;
        if (H5Literate(level.group.id(), H5_INDEX_NAME, H5_ITER_INC, &first, keepLink,
                       static_cast<void*>(&level.links)) < 0)
            return false;
        levels_.push_back(std::move(level));
        return true;
    }

    XmdfFileState& file_;
    std::vector<Level> levels_;
    std::set<ObjectMark> met_;
    std::string path_;
};

void list(XmdfFileState& file) {
    if (file.listed) return;
    file.scalarPaths.clear();
    file.vectorPaths.clear();
    file.skipped.clear();
    file.unreadable.clear();
    Walk(file).run();
    file.listed = true;
}

XmdfStatus describe(XmdfFileState& file, const std::vector<std::string>& paths, std::int32_t& count,
                    std::int32_t& longest) {
    return xmdfOperation([&] {
        list(file);
        std::size_t length = 0;
        for (const std::string& path : paths) length = std::max(length, path.size());
        count = static_cast<std::int32_t>(paths.size());
        longest = static_cast<std::int32_t>(length);
    });
}

XmdfStatus copyPaths(XmdfFileState& file, const std::vector<std::string>& from, std::vector<std::string>& paths) {
    return xmdfOperation([&] {
        list(file);
        paths = from;
    });
}

}  // namespace

XmdfStatus xfgetscalardatasetsinfo_f(XmdfFileState& file, std::int32_t& count, std::int32_t& longest) {
    return describe(file, file.scalarPaths, count, longest);
}
XmdfStatus xfgetvectordatasetsinfo_f(XmdfFileState& file, std::int32_t& count, std::int32_t& longest) {
    return describe(file, file.vectorPaths, count, longest);
}
XmdfStatus xfgetscalardatasetpaths_f(XmdfFileState& file, std::vector<std::string>& paths) {
    return copyPaths(file, file.scalarPaths, paths);
}
XmdfStatus xfgetvectordatasetpaths_f(XmdfFileState& file, std::vector<std::string>& paths) {
    return copyPaths(file, file.vectorPaths, paths);
}
const std::vector<std::string>& XMDF_SKIPPED(const XmdfFileState& file) { return file.skipped; }
const std::vector<std::string>& XMDF_UNREADABLE_GROUPS(const XmdfFileState& file) { return file.unreadable; }
