#pragma once

#include <string_view>

/// The token that an observation is added with and that its change notices carry; an observer decides by it. A value;
/// any thread.
struct ObservationTag {
    std::string_view text;

    friend bool operator==(const ObservationTag&, const ObservationTag&) = default;
};
