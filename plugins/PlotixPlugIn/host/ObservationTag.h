#pragma once

#include <string_view>

/// The token an observation carries and its change notices bring back; reactions dispatch on it.
struct ObservationTag {
    std::string_view text;

    friend bool operator==(const ObservationTag&, const ObservationTag&) = default;
};
