#include "gdal_outputs/module/failures.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>
#ifdef HAVE_SQLITE
#include <sqlite3.h>
#endif

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <string_view>

namespace {

// Plain memory: GDAL's workers report too, and a text that cannot be stored must not throw out of the handler.
struct FailureLog {
    std::mutex lock;
    std::array<char, 2000> first{};
};

FailureLog& failureLog() {
    static FailureLog log;
    return log;
}

thread_local std::array<char, 4000> reasonText{};

void put(char* to, std::size_t size, const char* text) {
    const std::size_t length = std::min(std::strlen(text), size - 1);
    std::replace_copy_if(
        text, text + length, to, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    to[length] = '\0';
}

/// Tiles that GDAL's workers unpack are put into small files of one band in memory, and fail to get the tag that tells
/// what the other bands are. The values are right all the same.
bool isHarmless(std::string_view text) {
    return text.find("/vsimem/decompress_") != std::string_view::npos &&
           text.find("ExtraSamples") != std::string_view::npos;
}

void onError(CPLErr level, CPLErrorNum, const char* text) {
    if (level != CE_Failure && level != CE_Fatal) return;
    if (isHarmless(text)) return;
    FailureLog& log = failureLog();
    const std::lock_guard guard(log.lock);
    if (log.first[0] == '\0') put(log.first.data(), log.first.size(), text);
}

}  // namespace

void START_GDAL() {
    static std::once_flag once;
    std::call_once(once, [] {
#ifdef HAVE_SQLITE
        // No connection is used by two threads at a time, and nobody asks how much memory it takes: 6 % less time
        // for a GeoPackage. Refused, and no loss, where SQLite is at work already.
        sqlite3_config(SQLITE_CONFIG_MULTITHREAD);
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
#endif
        CPLSetErrorHandler(onError);
        // time stamps inside GeoPackages are the same in every run
        CPLSetConfigOption("OGR_CURRENT_DATE", "1970-01-01T00:00:00.000Z");
        GDALAllRegister();
    });
}

void CLEAR_FAILURES() {
    CPLErrorReset();
    FailureLog& log = failureLog();
    const std::lock_guard guard(log.lock);
    log.first[0] = '\0';
}

std::string FIRST_FAILURE() {
    FailureLog& log = failureLog();
    const std::lock_guard guard(log.lock);
    std::string text = log.first.data();
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) text.pop_back();
    return text;
}

void FAIL(const std::string& otherwise) {
    const std::string reported = FIRST_FAILURE();
    throw GdalFailure{reported.empty() ? otherwise : reported};
}

void CHECK_FAILURES() {
    const std::string reported = FIRST_FAILURE();
    if (!reported.empty()) throw GdalFailure{reported};
}

void SET_REASON(const std::string& reason) { put(reasonText.data(), reasonText.size(), reason.c_str()); }

const char* REASON() { return reasonText.data(); }
