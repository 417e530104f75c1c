// Special times. Readers report maxima, minima, times of peak and threshold outputs by them; output naming maps them to
// tags.
#pragma once

constexpr float TIME_MAXIMUM = 99999.0F;
constexpr float TIME_MINIMUM = -99999.0F;
constexpr float TIME_TMAX = 99999.1F;  ///< 99999.1015625 in single precision
constexpr float TIME_OF_PEAK_LEVEL = 900001.0F;
constexpr float TIME_OF_PEAK_VELOCITY = 900002.0F;
constexpr float TIME_MAX_VALUE = 111111.0F;
constexpr float TIME_MAX_SOURCE = 222222.0F;
constexpr float TIME_EXCEEDANCE = 100000.0F;  ///< plus the threshold, up to below 200000
constexpr float TIME_DURATION = 200000.0F;    ///< plus the threshold, up to below 300000

/// True for a time that is a marker and not an hour: it is never converted between units.
/// Hours of real runs stay far below 99000 (eleven years).
constexpr bool IS_TIME_MARKER(float time) { return time > 99998.5F || time < -99998.5F; }
