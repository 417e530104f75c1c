// Which layers a run has read: the input-layer list, and its companions on disk when the run asks for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Forgets the list and the companions: the start of a run and of a test.
void INITIALISE_INPUT_LOG();
/// Creates <base>.wor and <base>_input_layers.mif/.mid and writes their headers.
void OPEN_INPUT_LOG(std::string_view base);
/// The layer's number in the list, from 1: a path is listed once, letter case ignored. `path` carries its extension;
/// `gisID` is what the log shows. 0 when the list is full, with one WARNING 0317.
std::size_t TRACK_INPUT_LAYER(std::string_view path, std::int32_t gisID);
void CLOSE_INPUT_LOG();
