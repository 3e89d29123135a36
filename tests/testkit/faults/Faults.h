#pragma once

#include <string>

/// Lets calls of the system fail, in this process and whoever makes them: the program itself, Qt, the
/// decoders. The library stands between the program and the C library, so a test program that links it needs
/// nothing else. Only calls that concern a file below one folder fail; a thread concerns every folder.
namespace faults {

enum class Call { Open, Write, Flush, Rename, Link, Truncate, Map, Thread };
constexpr const char *Names[] = {"open", "write", "flush", "rename", "link", "truncate", "map", "thread"};

/// From now on the `n`-th call of a kind (from 1) fails with `error`, one of errno's; with 0 for `n` none
/// does, and all are only noted. A write to a place that fails with 0 is lost and passes for done.
void arm(const std::string &folder, Call call = Call::Open, int n = 0, int error = 0);
/// Ends that; whether the n-th call came.
bool disarm();
/// The calls since `arm`, in order, each with a blank behind it.
std::string calls();
/// As on file systems that have no files without names.
void refuseNameless(bool refuse);

} // namespace faults
