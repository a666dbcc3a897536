#pragma once

#include <QtCore/QSize>

#include <cstdint>

/// What is meant where nobody says otherwise, the same in windows, on the command line and on the web. Values only.
namespace plotix {

/// Of a graph in a picture, and of a view that nobody has sized; points.
inline constexpr QSize kUsualGraphSize{1200, 600};

/// Of a site window that has no place of its own yet, and of its picture; points.
inline constexpr QSize kUsualWindowSize{1280, 800};

/// Where browsers find the sites, so that a bookmark finds them again: this machine alone, at this port.
inline constexpr auto kUsualWebAddress = "127.0.0.1";
inline constexpr std::uint16_t kUsualWebPort = 8123;

}  // namespace plotix
