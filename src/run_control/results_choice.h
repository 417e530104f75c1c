// Which results of an input are converted: the switches in the terms of the sources.
#pragma once

#include "inputs/dat_source.h"
#include "services/options.h"

#include <string>
#include <string_view>

TimeChoice TIME_CHOICE(const RunOptions& options);

/// What a search by type looks for in an .xmdf: the name of the -type, else "Vector Velocity" for arrows, depths for
/// text points (with a WARNING), water levels. Says so, and of a layer of levels or depths the cutoff.
/// quantity: of a .dat that the .xmdf has a difference with, which a search without a choice takes over; else blank.
std::string CHOOSE_XMDF_TYPE(const RunOptions& options, const std::string& quantity = {});

/// "Cutoff depth of ... is to be used ..." for a layer of water levels or depths.
void REPORT_CUTOFF(const RunOptions& options, std::string_view quantity);
