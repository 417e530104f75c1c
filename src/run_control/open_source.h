// From an input file to its results: what can be said of them before the mesh is looked for, and the source behind it.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results_source.h"
#include "run_control/input_files.h"

#include <memory>
#include <string>

/// What a results file says of itself.
struct Identified {
    std::unique_ptr<ResultsSource> dat;  ///< opened; of an .xmdf or a mesh nullptr
    std::string xmdfType;                ///< what a search by type looks for
};

/// Opens a .dat; settles what is looked for in an .xmdf. other: the .dat on the other side of a difference, whose
/// quantity a search without a choice takes over; nullptr for none.
Identified IDENTIFY_RESULTS(const InputFiles& files, const Identified* other = nullptr);

/// The source of the results; of a mesh its bed.
std::unique_ptr<ResultsSource> OPEN_SOURCE(const InputFiles& files, Identified found, const Mesh& mesh);

/// The source, or what -from, -until and -nth take of it where they are given. input: for messages.
std::unique_ptr<ResultsSource> WITH_SUBSET(std::unique_ptr<ResultsSource> source, const InputFiles& input);
