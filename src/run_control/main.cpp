#include "run_control/driver.h"
#include "services/console.h"
#include "services/exits.h"
#include "services/files.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

int main(int argc, char* argv[]) {
    try {
        return CONVERT(argc, argv);
    } catch (const RunStopped& stopped) {  // the reason is already on the console
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
