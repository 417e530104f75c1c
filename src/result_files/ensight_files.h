// The files of an EnSight Gold model: C Binary geometry and variables, and the case that lists them. Each routine stops
// the run when the disk refuses.
#pragma once

#include "inputs/results.h"
#include "result_files/ensight_parts.h"

#include <span>
#include <string>
#include <vector>

/// Nodes and elements keep the numbers of the mesh. Single precision would round map coordinates to decimetres: whole
/// units of the south-west corner are taken off, and the first description line says how many.
void WRITE_ENSIGHT_GEOMETRY(const std::string& name, const std::string& model, const Mesh& mesh,
                            std::span<const EnsightPart> parts);

/// One dataset at one time: per node, or of cell-centred results per element. What is missing is undefined, and so are
/// dry cells and nodes of dry cells only.
void WRITE_ENSIGHT_VARIABLE(const std::string& name, const Results& results, const Mesh& mesh,
                            std::span<const EnsightPart> parts);

struct EnsightVariable {
    std::string name;
    bool vector = false, perElement = false;
    std::size_t timeSet = 0;  ///< from 1; 0: a variable without a time
    std::string file;         ///< without folder; "*" for the digits of the time's number, from 0
};

struct EnsightCase {
    std::string geometry;  ///< without folder
    std::vector<EnsightVariable> variables;
    std::vector<std::vector<double>> timeSets;  ///< hours
};
void WRITE_ENSIGHT_CASE(const std::string& name, const EnsightCase& content);
