#pragma once

namespace fathel2 {

/// What is wrong with a result directory name template; 0 is nothing. Any int is a value,
/// so that a number from elsewhere can be asked for its text.
enum error_t : int {
  error_none = 0,
  error_empty = 1,            ///< no text, or only white space
  error_too_long = 2,         ///< longer than `max_pattern_length` bytes
  error_bad_character = 3,    ///< a character that a file name can't hold
  error_hidden_name = 4,      ///< begins with "." or white space
  error_bad_placeholder = 5,  ///< a brace outside "{at}", or "{at}" twice
  error_no_number = 6,        ///< no "@" at all
  error_several_numbers = 7,  ///< "@" in more than one run
  error_number_too_long = 8,  ///< a run of more than `max_number_digits` "@"
  error_reserved_name = 9,    ///< some result would get a reserved folder name
};

/// Text for the user that says what to change; never null, "" for `error_none`.
const char* toString(error_t error);

/// Names and checks the directories that hold analysis results.
///
/// A result directory name template is the name of one result directory, with these parts:
///   - exactly one run of 1 to 8 "@", which each result replaces by its number, padded
///     with zeros to the run's length ("r@@@" gives "r000", "r001", ..., "r1000");
///   - at most one "{at}", which each result replaces by the tag of its analysis type
///     (letters and digits, such as "hs" or "mem");
///   - any other characters but "/", "\", ":", "*", "?", """, "<", ">", "|", control
///     characters and braces, which some file systems or tools can't take;
///   - not beginning with "." or white space, which would hide the folder or make it hard
///     to type; at most `max_pattern_length` bytes;
///   - no number and tag can turn it into a reserved name (see `isReservedDirectoryName`).
/// Stateless; any thread.
class ResultDirectoryManager {
 public:
  /// Longest template in bytes; with a number of eight digits and a tag it still leaves
  /// a name well within the 255 bytes of common file systems.
  static constexpr int max_pattern_length = 120;
  static constexpr int max_number_digits = 8;

  /// `error_none` when `pattern` is a valid template, else its first fault in the order of
  /// `error_t`. A null pattern is empty.
  static error_t validateResultDirectoryPattern(const char* pattern);

  /// True for the names of the folders that a result directory keeps for itself, given in
  /// upper case: "ARCHIVE", "CONFIG", "DATA.0", "LOG", "SQLITE-DB". A result directory is
  /// never made inside one of them, nor named like one. Null is no name.
  static bool isReservedDirectoryName(const char* name);
};

}  // namespace fathel2
