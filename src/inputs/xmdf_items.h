// The list of datasets to convert, and how each is to be read.
#pragma once

#include "inputs/xmdf_facts.h"

#include <cstddef>
#include <string>
#include <vector>

enum class XmdfRead : std::uint8_t {
    Maximum,           ///< time number 1 of a stored maximum
    Minimum,           ///< time number 1 of a stored minimum
    SingleOutput,      ///< the only time of a dataset of the /Times/ folder; its values are times
    Time,              ///< one chosen time
    TemporalMaximums,  ///< the maximum over all times
    AllTimes           ///< each time in turn
};

/// One dataset to convert. Filled by SELECT_XMDF_OUTPUTS; read by the extraction and the naming of outputs.
struct XmdfItem {
    std::size_t file = 0;  ///< number of its file in the catalogue, from 0
    XmdfKind kind = XmdfKind::Scalar;
    std::string path;
    XmdfRead read = XmdfRead::Time;
    std::int32_t step = 0;  ///< Time: number of the time, from 1
    OutputTime time;        ///< names the output; AllTimes goes by the times of `facts` instead
    XmdfFacts facts;
    std::string quantity;  ///< "Water Level": the name of the type table, else the last part of the path
    std::string code;      ///< "h", blank for what is in no table
    /// of the dataset in file names: "_h", "_Vector_Velocity"; blank where the time part says it all
    std::string tag;
};

/// Fills quantity, code and tag of all items of a run, which must be told apart by them. A dataset is called by its
/// code, else by the last part of its path; a vector whose code a scalar has too, by its name. A dataset of times is
/// called by its time marker alone, unless another has the same.
void NAME_XMDF_ITEMS(std::vector<XmdfItem>& items);
