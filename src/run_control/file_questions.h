// What the run asks its user about files, on the console.
#pragma once

#include "services/files.h"

#include <span>
#include <string>

/// The questions of a run, for SET_FILE_QUESTIONS: a missing input is asked for until one exists, a missing folder is
/// offered to be made, a locked file to be tried again. Where nobody can answer, folders are made and nothing is tried
/// again.
FileQuestions CONSOLE_FILE_QUESTIONS();

/// "   Looked for a.2dm, b.2dm in folder /data/run": the names, which stand in one folder, each once.
void REPORT_LOOKED_FOR(std::span<const std::string> names);

/// Before the work: the folder of -into. Stops the run when it is a file, takes no new file, or is missing and is not
/// to be made.
void PREPARE_INTO_FOLDER();
/// Before the work: the folder of -out, where that will name the output. Stops the run when it is missing and is not
/// to be made.
void PREPARE_OUTPUT_FOLDER();
