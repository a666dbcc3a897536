#pragma once

#include "hostapp/core/OutputFile.h"
#include "hostapp/document/CaseFile.h"

/// Why a file was not written, and what is in one that was, in the user's language. Pure; main thread.
namespace plotix {

/// One sentence or two, which name the file and say what to do.
QString outputText(const OutputProblem& problem);
QString caseText(const CaseProblem& problem);
/// "10,080 records of 3 properties, 2 notes, 412.0 KB".
QString contentsText(const CaseContents& contents);

}  // namespace plotix
