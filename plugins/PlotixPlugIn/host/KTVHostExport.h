#pragma once

#include <QtCore/QtGlobal>

/// Types of this library cross the module boundary, so each is exported from one shared library.
#if defined(KTVHOST_LIBRARY)
#define KTVHOST_EXPORT Q_DECL_EXPORT
#else
#define KTVHOST_EXPORT Q_DECL_IMPORT
#endif
