#include <tamsel3/kept_lines.h>

#include <cstring>

namespace tamsel3 {

namespace {

// Large enough that the allocator's own cost per block vanishes, small enough that a short
// log doesn't hold much unused.
constexpr std::size_t block_size = std::size_t{64} * 1024;

}  // namespace

kept_lines_t::kept_lines_t() = default;
kept_lines_t::~kept_lines_t() = default;
kept_lines_t::kept_lines_t(kept_lines_t&&) noexcept = default;
kept_lines_t& kept_lines_t::operator=(kept_lines_t&&) noexcept = default;

char* kept_lines_t::reserve(std::size_t length, std::uint32_t& block, std::uint32_t& offset) {
  if (length > block_size / 4) {
    // A long text would waste the rest of a shared block: it gets one of its own, and the
    // shared one goes on filling.
    m_blocks.emplace_back(new char[length]);
    block = static_cast<std::uint32_t>(m_blocks.size() - 1);
    offset = 0;
    return m_blocks.back().get();
  }
  if (length > m_left) {
    m_blocks.emplace_back(new char[block_size]);
    m_current = static_cast<std::uint32_t>(m_blocks.size() - 1);
    m_left = block_size;
  }
  block = m_current;
  offset = static_cast<std::uint32_t>(block_size - m_left);
  m_left -= length;
  return m_blocks[m_current].get() + offset;
}

void kept_lines_t::add(pelit2::ESeverity severity, std::string_view text, int picture) {
  line_t line{0, 0, static_cast<std::uint32_t>(text.size()), static_cast<std::int32_t>(severity),
              static_cast<std::int32_t>(picture)};
  if (!text.empty()) {
    std::memcpy(reserve(text.size(), line.m_block, line.m_offset), text.data(), text.size());
  }
  m_lines.push_back(line);
}

void kept_lines_t::clear() {
  m_lines = std::deque<line_t>();
  m_blocks = std::vector<std::unique_ptr<char[]>>();
  m_current = 0;
  m_left = 0;
}

messenger_entry_t kept_lines_t::operator[](std::size_t index) const {
  return messenger_entry_t{severity(index), std::string(text(index))};
}

std::string_view kept_lines_t::text(std::size_t index) const {
  const line_t& line = m_lines[index];
  if (line.m_length == 0) {
    return {};
  }
  return std::string_view(m_blocks[line.m_block].get() + line.m_offset, line.m_length);
}

pelit2::ESeverity kept_lines_t::severity(std::size_t index) const {
  return static_cast<pelit2::ESeverity>(m_lines[index].m_severity);
}

int kept_lines_t::picture(std::size_t index) const { return m_lines[index].m_picture; }

}  // namespace tamsel3
