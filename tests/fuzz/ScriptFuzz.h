#pragma once

#include <cstddef>
#include <cstdint>

/// Takes the bytes for a script, compiles and runs it against a small Music, and prints the reply. Aborts
/// when the outcome is not exactly one of reply and error, or an error has no place or no words.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
