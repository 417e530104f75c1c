#include "platform/process.h"
#include "platform/terminal.h"
#include "run_control/driver.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"
#include "services/pending_outputs.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

int main(int argc, char* argv[]) {
    CLEAN_UP_BEFORE_SIGNALS_END(DISCARD_OUTPUTS_FOR_GOOD);
    try {
        const std::vector<std::string> texts = PROGRAM_ARGUMENTS(argc, argv);
        std::vector<const char*> arguments;
        for (const std::string& text : texts) arguments.push_back(text.c_str());
        return CONVERT(static_cast<int>(arguments.size()), arguments.data());
    } catch (const RunStopped& stopped) {  // the reason is already on the console
        DISCARD_OUTPUTS();
        FLUSH_CONSOLE();
        return stopped.status;
    } catch (const std::bad_alloc&) {
        DMESSAGE("ERROR - Could not allocate enough memory (RAM).");
    } catch (const std::invalid_argument& fault) {  // of the geometry, which knows no contact
        DMESSAGE(fault.what() + std::string(SUPPORT_CONTACT));
    } catch (const std::exception& fault) {
        DMESSAGE(std::string("ERROR - ") + fault.what());
    }
    CLOSE_FILES_ON_EXIT();
    FLUSH_CONSOLE();
    return STATUS_STOPPED;
}
