// A folder of a test's own, gone with the test, with the table of files as at the start of a run.
#pragma once

#include "services/files.h"
#include "temporary_folder.h"

struct ScratchFolder : TemporaryFolder {
    ScratchFolder() { INITIALISE_FILES(); }
    ~ScratchFolder() { INITIALISE_FILES(); }
};
