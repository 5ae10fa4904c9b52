#pragma once
// Bag files: a variant_bag_t saved as XML in UTF-8, and read back.
//
// What a host can rely on:
// - Everything that saves loads back equal (`==`), in the same order, repeated names kept;
//   saving a loaded bag gives the same bytes again.
// - Format: a root element `bag` (attribute version="1"), one `bag` element per nested bag
//   and one `value` element per value, each with its `name`; a value has a `kind` ("text",
//   "wtext", "int", "bool" or "empty") and its text as content. A text that XML can't hold
//   exactly (a NUL byte, narrow bytes that aren't UTF-8, a wide text with U+0000 or a lone
//   surrogate) is written with the attribute encoding="base64": the content is the base64
//   of its bytes, or of its UTF-16 units low byte first. A reader skips a value whose
//   encoding it doesn't know or that doesn't decode, as it skips unknown elements.
// - Nesting: a file holds bags nested at most `max_bag_depth` deep. Load refuses a deeper
//   file with error::FileFormat, and save refuses a deeper bag with error::BagTooDeep and
//   leaves the file as it was. Load, save, copy, comparison and destruction of bags use no
//   more stack for a deep bag than for a flat one, and their time, like the size of the
//   file, grows in proportion to the content.
// - A file that isn't well-formed XML, whose root isn't `bag`, that holds a NUL byte, or
//   that holds anything besides blanks, comments and processing instructions around its
//   one root (a second root, another element, text) fails with error::FileFormat and
//   leaves the bag as it was. A missing file gives error::FileNotFound, another failure
//   to read error::FileRead; a failed write gives error::FileWrite.
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
