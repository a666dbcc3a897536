#pragma once

#include <QtCore/QVariant>

#include <optional>

/// Numbers among choices. A free function; any thread.
namespace plotix {

/// The number, of whatever kind: what has been written as text, as in the recipe of a picture, comes back as an integer
/// where it has no fraction. Nothing for anything else, texts and truths among it.
std::optional<double> chosenNumber(const QVariant& value);

}  // namespace plotix
