#include "run_control/console.h"
#include "run_control/exits.h"

int main() {
    FLUSH_CONSOLE();
    return STATUS_DONE;
}
