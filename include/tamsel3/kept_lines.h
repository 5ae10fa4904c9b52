#pragma once
#include <tamsel3/export.h>
/// The lines that a log entry keeps, stored compactly: a long log holds its texts once, as
/// UTF-8 packed into large blocks, and per line only its severity and its picture index.
#include <pelit2/severity.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tamsel3 {

/// A said line: its severity bits and its text.
struct TAMSEL3_API messenger_entry_t {
  /// The severity bits of the line.
  pelit2::ESeverity m_severity = pelit2::severity_info;
  /// The line's text.
  std::string m_text;
};

/// The kept lines of one entry, in order. A line costs its text and about 20 bytes more,
/// whatever the length of the log. Reading gives copies (messenger_entry_t values); texts
/// and severities are also readable in place. One thread at a time.
class TAMSEL3_API kept_lines_t {
 public:
  /// Walks the lines in order, giving each as a messenger_entry_t value.
  class const_iterator {
   public:
    using iterator_category = std::input_iterator_tag;  ///< One pass.
    using value_type = messenger_entry_t;               ///< A line, as a value.
    using difference_type = std::ptrdiff_t;             ///< A distance in lines.
    using pointer = void;                               ///< Lines are read as values.
    using reference = messenger_entry_t;                ///< A copy, not a reference.

    /// The position of line `index` of `lines`.
    const_iterator(const kept_lines_t* lines, std::size_t index) : m_lines(lines), m_index(index) {}
    /// A copy of the line here.
    messenger_entry_t operator*() const { return (*m_lines)[m_index]; }
    /// Steps to the next line.
    const_iterator& operator++() {
      ++m_index;
      return *this;
    }
    /// Whether both stand at the same line.
    bool operator==(const const_iterator& other) const { return m_index == other.m_index; }
    /// Whether they stand at different lines.
    bool operator!=(const const_iterator& other) const { return m_index != other.m_index; }

   private:
    const kept_lines_t* m_lines;
    std::size_t m_index;
  };

  /// No lines.
  kept_lines_t();
  ~kept_lines_t();
  /// Takes the lines of `other`.
  kept_lines_t(kept_lines_t&& other) noexcept;
  /// Takes the lines of `other`; the lines held before are freed.
  kept_lines_t& operator=(kept_lines_t&& other) noexcept;

  /// Keeps a line with `severity`, `text` and the picture index `picture` (-1: none).
  void add(pelit2::ESeverity severity, std::string_view text, int picture = -1);
  /// Keeps `line` with no picture.
  void push_back(const messenger_entry_t& line) { add(line.m_severity, line.m_text); }
  /// Forgets every line and gives their memory back.
  void clear();

  /// The number of lines kept.
  std::size_t size() const { return m_lines.size(); }
  /// Whether no line is kept.
  bool empty() const { return m_lines.empty(); }
  /// A copy of line `index` (< size()).
  messenger_entry_t operator[](std::size_t index) const;
  /// The text of line `index`, valid until the lines are cleared or moved from.
  std::string_view text(std::size_t index) const;
  /// The severity bits of line `index`.
  pelit2::ESeverity severity(std::size_t index) const;
  /// The picture index that line `index` was kept with; -1 for none.
  int picture(std::size_t index) const;

  /// The first line.
  const_iterator begin() const { return const_iterator(this, 0); }
  /// Past the last line.
  const_iterator end() const { return const_iterator(this, m_lines.size()); }

 private:
  struct line_t {
    std::uint32_t m_block;
    std::uint32_t m_offset;
    std::uint32_t m_length;
    std::int32_t m_severity;
    std::int32_t m_picture;
  };
  // Where a text of `length` bytes goes: the free end of the current block, or a new one.
  char* reserve(std::size_t length, std::uint32_t& block, std::uint32_t& offset);

  // Texts share blocks of a fixed size; a longer text gets a block of its own.
  std::vector<std::unique_ptr<char[]>> m_blocks;
  std::uint32_t m_current = 0;  // the block being filled
  std::size_t m_left = 0;       // bytes free at its end; 0 before the first block
  // A deque grows by small fixed chunks: no doubling slack in a log of a million lines.
  std::deque<line_t> m_lines;
};

}  // namespace tamsel3
