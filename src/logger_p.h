#pragma once
// The library's one logger, made at static initialisation.
#include <log4cplus/logger.h>

namespace tamsel3 {
extern const log4cplus::Logger g_ylvaneLogger;
}
