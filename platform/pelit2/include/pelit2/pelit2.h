#pragma once
/// How running work reports messages and progress.
#include <pelit2/messenger.h>
#include <pelit2/progress.h>
#include <pelit2/severity.h>
