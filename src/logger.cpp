#include "logger_p.h"

#include <ylvane/log.h>

namespace tamsel3 {
const log4cplus::Logger g_ylvaneLogger = ylvane_1::log::libraryLogger();
}
