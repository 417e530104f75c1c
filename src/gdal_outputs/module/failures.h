// What goes wrong inside GDAL, gathered for the program: GDAL reports through a handler, often from a call that returns
// nothing, such as closing a file.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

/// Thrown inside the module only; `guarded` turns it into the reason of a failed call.
struct GdalFailure {
    std::string reason;
};

/// Registers the drivers and takes over GDAL's messages, so that nothing of them reaches the console. Once a process.
void START_GDAL();

/// Forgets what GDAL has reported so far.
void CLEAR_FAILURES();
/// GDAL's first failure since CLEAR_FAILURES, on one line; blank when there was none. Workers of GDAL's count.
std::string FIRST_FAILURE();
/// Throws GDAL's first failure, else `otherwise`.
[[noreturn]] void FAIL(const std::string& otherwise);
/// FAIL when GDAL has reported a failure.
void CHECK_FAILURES();

void SET_REASON(const std::string& reason);
const char* REASON();

/// Runs a call of the table: what it returns, or `failed` with the reason set, whatever was thrown.
template <typename Result, typename Call>
Result guarded(Result failed, Call&& call) noexcept {
    try {
        CLEAR_FAILURES();
        return std::forward<Call>(call)();
    } catch (const GdalFailure& failure) {
        SET_REASON(failure.reason);
    } catch (const std::bad_alloc&) {
        SET_REASON("not enough memory");
    } catch (const std::exception& other) {
        SET_REASON(other.what());
    } catch (...) {
        SET_REASON("unknown failure");
    }
    return failed;
}
