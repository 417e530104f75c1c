// The calls that differ between Windows and Linux. Nothing else in the program includes a platform header.
#pragma once

#include <cstdint>
#include <cstdio>

/// True when the standard input is a terminal, so that a person can answer.
bool INPUT_IS_TERMINAL();
/// True when the standard output is a terminal, so that a progress count may overwrite itself.
bool OUTPUT_IS_TERMINAL();

/// A write to a pipe that nobody reads any more (output cut off by "head"), or beyond the limit of a file's size, fails
/// as any other write does, instead of ending the process.
void SURVIVE_REFUSED_WRITES();

/// True when a file could not be opened because another program holds it: `error` is errno right behind the attempt.
/// Elsewhere than on Windows a lock never stands in the way, and EACCES is a matter of permission.
bool HELD_BY_ANOTHER_PROGRAM(int error);
/// Moves a file to a byte offset from its start; files beyond 2 GiB are reached. False when the move fails.
bool SEEK_64(std::FILE* file, std::int64_t offset);
/// Offset of the next byte from the start of the file; -1 when it cannot be told.
std::int64_t TELL_64(std::FILE* file);

/// Bytes of memory that this process can still use before the system refuses or starts to kill: the smaller of what the
/// machine has available and what a container leaves. 0 when the system does not tell.
std::uint64_t AVAILABLE_MEMORY();
