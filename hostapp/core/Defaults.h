#pragma once

#include <QtCore/QSize>

#include <cstdint>

/// Defaults, the same in windows, on the command line and on the web. Constants; any thread.
namespace plotix {

/// Of a graph in a picture, and of a view without a size; points.
inline constexpr QSize kUsualGraphSize{1200, 600};

/// Of a site window without a stored geometry, and of its picture; points.
inline constexpr QSize kUsualWindowSize{1280, 800};

/// The web server's address: this machine alone, at a fixed port, so that bookmarks stay valid.
inline constexpr auto kUsualWebAddress = "127.0.0.1";
inline constexpr std::uint16_t kUsualWebPort = 8123;

}  // namespace plotix
