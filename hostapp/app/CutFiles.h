#pragma once

/// The last word of a program whose file was cut short. Free function; main thread.
namespace plotix {

/// From now on a file that somebody cuts short while it is mapped ends the program with one line and status 1, instead
/// of a bare signal. Site files are never mapped; the index beside an open one is, by the database library, and nobody
/// can go on without it. What was acknowledged is stored: it is in the file or its log, and the index is made anew.
void explainCutFiles();

}  // namespace plotix
