// Stands in for the XMDF layer in a build without the HDF5 library: every operation fails with the same reason.
#include "xmdf/xmdf_output.h"

struct XmdfFileState {};
struct XmdfGroupState {};
struct XmdfOutputState {};
void XmdfFileCloser::operator()(XmdfFileState* state) const { delete state; }
void XmdfGroupCloser::operator()(XmdfGroupState* state) const { delete state; }
void XmdfOutputCloser::operator()(XmdfOutputState* state) const { delete state; }

namespace {
XmdfStatus absent() {
    return {-1, "This build reads and writes no .xmdf files: it was made without the HDF5 library."};
}
}  // namespace

std::string HDF5_VERSION() { return {}; }
XmdfStatus xfopenfile_f(const std::string&, XmdfFile&) { return absent(); }
bool XMDF_UNLOCKED(const XmdfFileState&) { return false; }
XmdfStatus xfclosefile_f(XmdfFile&) { return absent(); }
XmdfStatus xfgetlibraryversion_f(float&) { return absent(); }
XmdfStatus xfgetscalardatasetsinfo_f(XmdfFileState&, std::int32_t&, std::int32_t&) { return absent(); }
XmdfStatus xfgetvectordatasetsinfo_f(XmdfFileState&, std::int32_t&, std::int32_t&) { return absent(); }
XmdfStatus xfgetscalardatasetpaths_f(XmdfFileState&, std::vector<std::string>&) { return absent(); }
XmdfStatus xfgetvectordatasetpaths_f(XmdfFileState&, std::vector<std::string>&) { return absent(); }
const std::vector<std::string>& XMDF_SKIPPED(const XmdfFileState&) {
    static const std::vector<std::string> none;
    return none;
}
const std::vector<std::string>& XMDF_UNREADABLE_GROUPS(const XmdfFileState& file) { return XMDF_SKIPPED(file); }
XmdfStatus xfopengroup_f(XmdfFileState&, const std::string&, XmdfGroup&) { return absent(); }
XmdfStatus xfclosegroup_f(XmdfGroup&) { return absent(); }
XmdfStatus xfgetdatasetnumvals_f(XmdfGroupState&, std::int32_t&) { return absent(); }
XmdfStatus xfgetdatasetnumactive_f(XmdfGroupState&, std::int32_t&) { return absent(); }
XmdfStatus xfgetdatasettimeunits_f(XmdfGroupState&, std::string&) { return absent(); }
XmdfStatus xfgetdatasetunits_f(XmdfGroupState&, std::string&) { return absent(); }
XmdfStatus xfgetdatasetnumtimes_f(XmdfGroupState&, std::int32_t&) { return absent(); }
std::string XMDF_TIMES_LEFT_OUT(XmdfGroupState&) { return {}; }
XmdfStatus XMDF_WHOLE_TIMES(XmdfGroupState&, std::int32_t&) { return absent(); }
XmdfStatus xfgetdatasettimes_f(XmdfGroupState&, std::vector<double>&) { return absent(); }
XmdfStatus xfgetdatasetextremes_f(XmdfGroupState&, std::vector<float>&, std::vector<float>&) { return absent(); }
XmdfStatus xfreadscalarvaluestimestep_f(XmdfGroupState&, std::int32_t, std::span<float>) { return absent(); }
XmdfStatus xfreadvectorvaluestimestep_f(XmdfGroupState&, std::int32_t, std::span<float>) { return absent(); }
XmdfStatus xfreadactivitytimestep_f(XmdfGroupState&, std::int32_t, std::span<std::uint8_t>) { return absent(); }

XmdfStatus XMDF_CREATE(const std::string&, XmdfOutput&) { return absent(); }
XmdfStatus XMDF_BEGIN_DATASET(XmdfOutputState&, const XmdfNewDataset&) { return absent(); }
bool XMDF_HAS_DATASET(XmdfOutputState&, const XmdfNewDataset&) { return false; }
XmdfStatus XMDF_ADD_TIME(XmdfOutputState&, const XmdfNewTime&) { return absent(); }
XmdfStatus XMDF_FINISH(XmdfOutput&) { return absent(); }
void XMDF_READ_AHEAD(XmdfGroupState&, std::int32_t) {}
