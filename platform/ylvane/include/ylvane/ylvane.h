#pragma once
/// Logging agent of the tamsel3 family on log4cplus.
#include <ylvane/log.h>
#include <ylvane/log_text.h>
