#pragma once

#include <QtCore/QStringList>

/// The sites opened last, in the user's settings. Free functions; main thread only.
namespace plotix {

inline constexpr int kRecentSiteLimit = 10;

/// Absolute paths, the latest first; those that are gone are left out.
QStringList recentSites();

/// Puts the site first.
void rememberRecentSite(const QString& path);
void forgetRecentSites();

}  // namespace plotix
