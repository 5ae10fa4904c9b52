#pragma once
/// Search-directory containers: where analysis tools look for files of each kind.
#include <HALLIN_2_13/object_ptr.h>
#include <HALLIN_2_13/search_dir_container.h>
#include <HALLIN_2_13/search_dirs.h>
