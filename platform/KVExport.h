// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

// Symbols are exported while the library itself is built, and imported elsewhere.

#if defined(KVCORECOMMON_LIBRARY)
#define KVCORECOMMON_EXPORT Q_DECL_EXPORT
#else
#define KVCORECOMMON_EXPORT Q_DECL_IMPORT
#endif

#if defined(KVVELMORAFRAMEWORK_LIBRARY)
#define KVVELMORA_EXPORT Q_DECL_EXPORT
#else
#define KVVELMORA_EXPORT Q_DECL_IMPORT
#endif
