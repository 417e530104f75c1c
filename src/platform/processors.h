// How much of the machine this process may use, and reading a file from several threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

/// Processors that the process may run on at the same time, from 1: its affinity, and where a container is given a
/// share of the processors' time, that share rounded up.
int PROCESSORS_ALLOWED();

/// Bytes of an open file from `offset` on; where the stream stands plays no part and stays, so that several threads may
/// read at once. False when they are not all there or cannot be read.
bool READ_FROM(std::FILE* file, std::int64_t offset, void* to, std::size_t count);
