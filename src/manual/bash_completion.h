// What bash needs to complete the program's switches and the names of their files.
#pragma once

#include <string>

/// A script for bash-completion: every switch of the table, as the usage text writes it; file names behind those that
/// take one, and the inputs' otherwise.
std::string BASH_COMPLETION();
