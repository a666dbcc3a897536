#pragma once

#include "hostapp/formulas/FormulaProgram.h"
#include "hostapp/formulas/FormulaSeries.h"
#include "hostapp/formulas/PagedSeries.h"

#include <QtCore/QTimeZone>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Works a program out by columns. Free functions; any thread. Throw std::bad_alloc where a column has no room.
namespace plotix {

struct FormulaSurroundings {
    QTimeZone zone = QTimeZone::systemTimeZone();  ///< of local days
    std::function<bool()> goesOn = {};             ///< answers false to stop; empty: to the end
};

/// `inputs`: index for index with the program's. The result has the times of its inputs, or the union of them; it has a
/// value where all that it needs has one and the result is a finite number. Inputs of the same times are read where
/// they are. Nothing when it was stopped. Requires: as many inputs as the program has, at least one.
std::optional<FormulaSeries> evaluate(const FormulaProgram& program, const std::vector<FormulaSeries>& inputs,
                                      const FormulaSurroundings& surroundings = {});

/// The same values to the bit, worked out where somebody looks: pages take room in `cache`. Whoever asks looks at all
/// of them once, from the beginning (see StreamedColumns.h). `inputs` may be paged. *Shares* program, inputs and cache.
std::optional<PagedSeries> evaluateByPages(const std::shared_ptr<const FormulaProgram>& program,
                                           const std::vector<PagedSeries>& inputs,
                                           const std::shared_ptr<PageCache>& cache,
                                           const FormulaSurroundings& surroundings = {});

}  // namespace plotix
