// Without HDF5 an .xmdf file is refused with a reason; nothing is opened and nothing crashes.
#include "xmdf/xmdf.h"

int main() {
    XmdfFile file;
    const bool refused = xfopenfile_f("x.xmdf", file) < 0 && file == nullptr;
    return refused && XMDF_REASON().find("without the HDF5 library") != std::string::npos ? 0 : 1;
}
