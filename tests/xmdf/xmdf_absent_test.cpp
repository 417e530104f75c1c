// Without HDF5 an .xmdf file is refused with a reason; nothing is opened and nothing crashes.
#include "xmdf/xmdf.h"

int main() {
    XmdfFile file;
    const XmdfStatus status = xfopenfile_f("x.xmdf", file);
    return status < 0 && file == nullptr && status.reason.find("without the HDF5 library") != std::string::npos ? 0 : 1;
}
