#pragma once

#include "hostapp/core/OutputFile.h"

/// Why a file was not written, in the user's language. Pure; main thread.
namespace plotix {

/// One sentence or two, which name the file and say what to do.
QString outputText(const OutputProblem& problem);

}  // namespace plotix
