// Which file is converted, of what kind it is, and which mesh belongs to it.
#pragma once

#include "inputs/mesh.h"

#include <cstdint>
#include <string>
#include <string_view>

enum class InputKind : std::uint8_t { Mesh, Dat, Xmdf };

/// The input and mesh files of the run, under the names by which they exist.
struct InputFiles {
    std::string input;
    std::string mesh;
    InputKind kind = InputKind::Mesh;
};

/// Settles the input file: the command line's, else asked for with the prompt until one exists. A folder stops the run.
InputFiles FIND_INPUT_FILE(std::string_view prompt = " Please enter the SMS .dat, .2dm or .xmdf file -> ");
/// The kind by extension. Stops the run for .txt and for an extension that is no model file's.
void FIND_INPUT_KIND(InputFiles& files);
/// Settles the mesh: `named` (-2dm) unless it is blank, else beside the input: "x.2dm" for "x_h.dat", then the input's
/// full name, then the name cut at each earlier underscore (for an .xmdf the full name comes first); else what was
/// looked for and where is said, and it is asked for until one exists.
void FIND_MESH_FILE(InputFiles& files, const std::string& named);

/// Reads it, less what -rmp leaves out.
void READ_MESH(const std::string& name, Mesh& mesh);
