#pragma once
#include <korvat2/error.h>
#include <korvat2/variant_bag.h>

namespace korvat2 {

/// Reads a bag file into `bag`, replacing what it held. A non-empty `extra` names a nested
/// bag of the file's top level to read instead of the whole file. A missing, unreadable,
/// truncated or malformed file gives a failing code and leaves `bag` as it was; unknown
/// elements and values that don't parse are skipped.
///
/// Only a regular file is read, links followed: a folder, a FIFO or a device fails at once
/// with error::NotSupported, without being read; a missing file or a dangling link gives
/// error::FileNotFound. The read stops at the size the file had when it was opened.
error_code_t load_variant_bag(variant_bag_t& bag, const char* path, const char* extra);

/// Writes `bag` to a bag file. A failed write keeps the old file whole and is logged at
/// ERROR with the path and the system's reason.
///
/// The file is replaced atomically: a temporary file in the same folder is written and
/// flushed to disk, then renamed over the old one, and the folder is flushed; after a crash
/// or a kill at any moment there is the old file or the new one, byte for byte, never half
/// of either. A `path` that is a symbolic link (or a chain of them) keeps the link: the file
/// it names is replaced, with its temporary in that file's folder, and a dangling link
/// creates the file it names; a loop of links fails. The new file keeps the old one's
/// permission bits; a file without any write bit is left as it is and the save fails, even
/// for root. Temporaries are hidden files, ".<name>.XXXXXX~" beside the target (a name too
/// long for that is cut and carries a hash of the whole name), so any name the system
/// takes can be saved. Each save holds an advisory lock (flock) on its temporary while it
/// runs; a save removes the temporaries of earlier saves of the same file whose lock it can
/// take, the ones a crash or a kill left behind, and never one of a save still running in
/// another process. So at most the temporary of the last interrupted save stays until the
/// next save of that file.
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
