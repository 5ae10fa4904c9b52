#pragma once
/// Result directories: their name templates and the names they keep for themselves.
#include <fathel2/result_directory_manager.h>
