#pragma once

// Included before each source, so that Qt's headers declare what they have on macOS.

#if __has_include(<QtCore/qsystemdetection.h>)
#include <QtCore/qsystemdetection.h>
#endif

#undef Q_OS_LINUX
#define Q_OS_DARWIN
#define Q_OS_MACOS
#define Q_OS_MAC

extern "C" const char* getprogname();
