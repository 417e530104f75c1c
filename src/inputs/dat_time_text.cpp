#include "inputs/dat_time_text.h"

#include "services/options.h"
#include "text_utils/numbers.h"

std::string DAT_TIME_TEXT(float hours) {
    constexpr float SECONDS_PER_HOUR = 3600.0F;
    return AREAL(OPTIONS().seconds && !IS_TIME_MARKER(hours) ? hours * SECONDS_PER_HOUR : hours);
}
