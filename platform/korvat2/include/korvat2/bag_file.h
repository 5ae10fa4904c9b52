#pragma once
#include <korvat2/error.h>
#include <korvat2/variant_bag.h>

namespace korvat2 {

/// The deepest nesting a bag file holds: a bag without nested bags has depth 1, and a
/// bag holding a bag of depth n has depth n + 1.
inline constexpr int max_bag_depth = 1000;

/// Reads a bag file into `bag`, replacing what it held. A non-empty `extra` names a nested
/// bag of the file's top level to read instead of the whole file. A missing, unreadable,
/// truncated or malformed file gives a failing code and leaves `bag` as it was; unknown
/// elements and values that don't parse are skipped.
error_code_t load_variant_bag(variant_bag_t& bag, const char* path, const char* extra);

/// Writes `bag` to a bag file. The file is replaced atomically: a temporary file in the
/// same folder is written and flushed to disk, then renamed over the old one, and the
/// folder is flushed; after a crash there is the old file or the new one. A failed write
/// keeps the old file whole and is logged at ERROR with the path and the system's reason.
error_code_t save_variant_bag(const variant_bag_t& bag, const char* path);

namespace _internal {
/// Steps of a save, for tests of crash safety: the hook is called at each step and a
/// false answer makes the save fail there as if the disk had failed.
enum save_step_t { save_temp_written, save_temp_synced, save_renamed };
using save_step_hook_t = bool (*)(save_step_t step);
/// Installs a hook (null removes it) and returns the previous one. Not thread-safe.
save_step_hook_t set_save_step_hook(save_step_hook_t hook);
}  // namespace _internal

}  // namespace korvat2
