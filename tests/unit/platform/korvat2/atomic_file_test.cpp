// How bag files meet the file system: temporaries of interrupted saves, files that are not
// regular, long names, links, protected files, and saves killed at any moment.
#include <korvat2/bag_file.h>

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <random>
#include <set>
#include <string>

namespace {

using korvat2::error_code_t;
using korvat2::load_variant_bag;
using korvat2::save_variant_bag;
using korvat2::variant_bag_t;
using korvat2::_internal::save_step_t;
using korvat2::_internal::set_save_step_hook;
using test_support::read_bytes;
using test_support::temp_dir_t;
using test_support::write_bytes;
using names_t = std::set<std::string>;

const int error_level = 40000;

variant_bag_t bag_of(int marker) {
  variant_bag_t bag;
  bag.put("marker", marker);
  bag.put("text", std::string(200, static_cast<char>('a' + marker % 26)).c_str());
  return bag;
}

void save_ok(const variant_bag_t& bag, const std::string& path) {
  const error_code_t result = save_variant_bag(bag, path.c_str());
  ASSERT_TRUE(result.succeeded()) << path << ": " << result.as_string(error_code_t::with_value);
}

variant_bag_t load_ok(const std::string& path) {
  variant_bag_t bag;
  const error_code_t result = load_variant_bag(bag, path.c_str(), "");
  EXPECT_TRUE(result.succeeded()) << path << ": " << result.as_string(error_code_t::with_value);
  return bag;
}

bool is_link(const std::string& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

std::string link_text(const std::string& path) {
  char buffer[4096];
  const ssize_t n = ::readlink(path.c_str(), buffer, sizeof buffer);
  return n < 0 ? std::string() : std::string(buffer, static_cast<std::size_t>(n));
}

// ---------------------------------------------------------------- saves in other processes

// The hooks are plain function pointers; a child's hook reads what it does from here.
save_step_t g_child_step = korvat2::_internal::save_temp_written;
int g_child_signal_fd = -1;
int g_child_wait_fd = -1;

bool die_at_step(save_step_t step) {
  if (step == g_child_step) {
    ::_exit(0);
  }
  return true;
}

// Tells the parent that the temporary is written, then waits until the parent lets go.
bool pause_at_step(save_step_t step) {
  if (step == g_child_step) {
    char byte = 1;
    if (::write(g_child_signal_fd, &byte, 1) != 1 || ::read(g_child_wait_fd, &byte, 1) < 0) {
      ::_exit(4);
    }
  }
  return true;
}

int wait_for(pid_t pid) {
  int status = 0;
  if (pid < 0 || ::waitpid(pid, &status, 0) != pid) {
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// Saves in a child that dies at `step`, as a save killed there would; 0 when it did.
int save_dying_at(const variant_bag_t& bag, const std::string& path, save_step_t step) {
  g_child_step = step;
  const pid_t pid = ::fork();
  if (pid == 0) {
    set_save_step_hook(&die_at_step);
    save_variant_bag(bag, path.c_str());
    ::_exit(3);
  }
  return wait_for(pid);
}

// A save in a child that stops once its temporary is written, until `finish`.
class paused_save_t {
 public:
  paused_save_t(const variant_bag_t& bag, const std::string& path) {
    int to_parent[2];
    int to_child[2];
    EXPECT_EQ(::pipe(to_parent), 0);
    EXPECT_EQ(::pipe(to_child), 0);
    g_child_step = korvat2::_internal::save_temp_written;
    m_pid = ::fork();
    if (m_pid == 0) {
      ::close(to_parent[0]);
      ::close(to_child[1]);  // else the parent's close would never end the child's wait
      g_child_signal_fd = to_parent[1];
      g_child_wait_fd = to_child[0];
      set_save_step_hook(&pause_at_step);
      ::_exit(save_variant_bag(bag, path.c_str()).succeeded() ? 0 : 5);
    }
    ::close(to_parent[1]);
    ::close(to_child[0]);
    m_release_fd = to_child[1];
    char byte = 0;
    m_paused = ::read(to_parent[0], &byte, 1) == 1;
    ::close(to_parent[0]);
  }
  ~paused_save_t() {
    if (m_release_fd >= 0) {
      finish();
    }
  }
  paused_save_t(const paused_save_t&) = delete;
  paused_save_t& operator=(const paused_save_t&) = delete;

  bool paused() const { return m_paused; }
  /// Lets the save go on and gives its exit status, 0 when it saved.
  int finish() {
    ::close(m_release_fd);  // the child's read ends with nothing: it goes on
    m_release_fd = -1;
    return wait_for(m_pid);
  }

 private:
  pid_t m_pid = -1;
  int m_release_fd = -1;
  bool m_paused = false;
};

// ---------------------------------------------------------------- temporaries

TEST(atomic_file_test, a_clean_save_removes_the_temporaries_of_dead_saves_of_its_target) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  save_ok(bag_of(0), path);
  for (int i = 1; i <= 4; ++i) {
    ASSERT_EQ(
        save_dying_at(bag_of(i), path,
                      i % 2 ? korvat2::_internal::save_temp_written : korvat2::_internal::save_temp_synced),
        0);
  }
  ASSERT_GT(dir.names().size(), 1u) << "the dead saves left a temporary";
  save_ok(bag_of(9), path);
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
  EXPECT_EQ(load_ok(path), bag_of(9));
}

TEST(atomic_file_test, a_save_keeps_the_temporaries_of_other_targets) {
  temp_dir_t dir;
  ASSERT_EQ(save_dying_at(bag_of(1), dir.file("other.xml"), korvat2::_internal::save_temp_synced), 0);
  const names_t others = dir.names();
  ASSERT_EQ(others.size(), 1u);
  save_ok(bag_of(2), dir.file("bag.xml"));
  save_ok(bag_of(3), dir.file("other.xml.bak"));
  names_t expected = others;
  expected.insert({"bag.xml", "other.xml.bak"});
  EXPECT_EQ(dir.names(), expected);
  save_ok(bag_of(4), dir.file("other.xml"));
  EXPECT_EQ(dir.names(), (names_t{"bag.xml", "other.xml", "other.xml.bak"}));
}

TEST(atomic_file_test, a_save_keeps_files_that_only_look_like_temporaries) {
  temp_dir_t dir;
  const names_t look_alikes{".bag.xml.abcdef", ".bag.xml.abcde~", ".bag.xml.abcdefg~", "bag.xml~",
                            ".bag.xml.ab-def~"};
  for (const std::string& name : look_alikes) {
    dir.write(name, "kept");
  }
  save_ok(bag_of(1), dir.file("bag.xml"));
  names_t expected = look_alikes;
  expected.insert("bag.xml");
  EXPECT_EQ(dir.names(), expected);
}

TEST(atomic_file_test, a_save_keeps_the_temporary_of_a_save_running_in_another_process) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  save_ok(bag_of(0), path);
  paused_save_t running(bag_of(1), path);
  ASSERT_TRUE(running.paused());
  const names_t with_running_temp = dir.names();
  ASSERT_EQ(with_running_temp.size(), 2u);
  save_ok(bag_of(2), path);
  EXPECT_EQ(dir.names(), with_running_temp);
  EXPECT_EQ(load_ok(path), bag_of(2));
  EXPECT_EQ(running.finish(), 0);
  EXPECT_EQ(load_ok(path), bag_of(1));
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

// A temporary whose lock is held stays, whoever made it: a save can't tell a slow save from a
// hung one, and must never take a file from under a writer.
TEST(atomic_file_test, a_save_keeps_a_dead_temporary_while_another_process_holds_its_lock) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  ASSERT_EQ(save_dying_at(bag_of(1), path, korvat2::_internal::save_temp_written), 0);
  const names_t left = dir.names();
  ASSERT_EQ(left.size(), 1u);
  const std::string temp = dir.file(*left.begin());
  const int fd = ::open(temp.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(::flock(fd, LOCK_EX), 0);
  save_ok(bag_of(2), path);
  EXPECT_EQ(dir.names().count(*left.begin()), 1u);
  ::close(fd);
  save_ok(bag_of(3), path);
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

// ---------------------------------------------------------------- what can be loaded

// Loads in a child bounded by an alarm, so that a read without end fails the test instead of
// hanging it: 0 when the load failed with `expected` and kept the bag.
int load_in_child(const std::string& path, korvat2::error::code_t expected) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::alarm(10);
    variant_bag_t bag = bag_of(7);
    const error_code_t result = load_variant_bag(bag, path.c_str(), "");
    ::_exit(result == error_code_t(expected) && bag == bag_of(7) ? 0 : 1);
  }
  return wait_for(pid);
}

TEST(atomic_file_test, a_link_to_an_endless_device_fails_at_once) {
  temp_dir_t dir;
  ASSERT_EQ(::symlink("/dev/zero", dir.file("zero.xml").c_str()), 0);
  EXPECT_EQ(load_in_child(dir.file("zero.xml"), korvat2::error::NotSupported), 0);
}

TEST(atomic_file_test, a_fifo_fails_at_once) {
  temp_dir_t dir;
  ASSERT_EQ(::mkfifo(dir.file("pipe.xml").c_str(), 0600), 0);
  EXPECT_EQ(load_in_child(dir.file("pipe.xml"), korvat2::error::NotSupported), 0);
}

TEST(atomic_file_test, a_folder_fails_as_not_a_file) {
  temp_dir_t dir;
  ASSERT_EQ(::mkdir(dir.file("folder.xml").c_str(), 0755), 0);
  variant_bag_t bag = bag_of(1);
  EXPECT_EQ(load_variant_bag(bag, dir.file("folder.xml").c_str(), ""),
            error_code_t(korvat2::error::NotSupported));
  EXPECT_EQ(bag, bag_of(1));
}

TEST(atomic_file_test, a_link_to_a_regular_file_loads_it) {
  temp_dir_t dir;
  save_ok(bag_of(3), dir.file("real.xml"));
  ASSERT_EQ(::symlink("real.xml", dir.file("link.xml").c_str()), 0);
  EXPECT_EQ(load_ok(dir.file("link.xml")), bag_of(3));
}

TEST(atomic_file_test, a_missing_file_and_a_dangling_link_are_not_found) {
  temp_dir_t dir;
  ASSERT_EQ(::symlink("nowhere.xml", dir.file("link.xml").c_str()), 0);
  variant_bag_t bag;
  EXPECT_EQ(load_variant_bag(bag, dir.file("missing.xml").c_str(), ""),
            error_code_t(korvat2::error::FileNotFound));
  EXPECT_EQ(load_variant_bag(bag, dir.file("link.xml").c_str(), ""),
            error_code_t(korvat2::error::FileNotFound));
}

// ---------------------------------------------------------------- long names

TEST(atomic_file_test, target_names_up_to_the_longest_the_system_allows_save_and_load) {
  temp_dir_t dir;
  std::string utf8_name;
  for (int i = 0; i < 85; ++i) {
    utf8_name += "\xE6\x97\xA5";  // 255 bytes
  }
  names_t expected;
  for (std::size_t length = 240; length <= 255; ++length) {
    expected.insert(std::string(length, 'n'));
  }
  expected.insert(utf8_name);
  for (const std::string& name : expected) {
    save_ok(bag_of(static_cast<int>(name.size())), dir.file(name));
    save_ok(bag_of(1), dir.file(name));  // and over an existing file
    EXPECT_EQ(load_ok(dir.file(name)), bag_of(1)) << name.size();
  }
  EXPECT_EQ(dir.names(), expected);
}

TEST(atomic_file_test, long_names_that_share_their_start_keep_their_own_temporaries) {
  temp_dir_t dir;
  const std::string first = std::string(254, 'n') + "1";
  const std::string second = std::string(254, 'n') + "2";
  ASSERT_EQ(save_dying_at(bag_of(1), dir.file(first), korvat2::_internal::save_temp_written), 0);
  const names_t left = dir.names();
  ASSERT_EQ(left.size(), 1u);
  save_ok(bag_of(2), dir.file(second));
  EXPECT_EQ(dir.names().count(*left.begin()), 1u);
  save_ok(bag_of(3), dir.file(first));
  EXPECT_EQ(dir.names(), (names_t{first, second}));
}

// ---------------------------------------------------------------- links

// What the watched folders gained by the time the temporary file was written.
const temp_dir_t* g_link_dir = nullptr;
const temp_dir_t* g_target_dir = nullptr;
names_t g_link_dir_names;
names_t g_target_dir_names;

bool note_names_when_written(save_step_t step) {
  if (step == korvat2::_internal::save_temp_written) {
    g_link_dir_names = g_link_dir->names();
    g_target_dir_names = g_target_dir->names();
  }
  return true;
}

TEST(atomic_file_test, saving_through_a_link_replaces_the_linked_file_in_its_own_folder) {
  temp_dir_t links;
  temp_dir_t targets;
  const std::string target = targets.file("real.xml");
  save_ok(bag_of(1), target);
  ASSERT_EQ(::symlink(target.c_str(), links.file("link.xml").c_str()), 0);
  g_link_dir = &links;
  g_target_dir = &targets;
  const korvat2::_internal::save_step_hook_t previous = set_save_step_hook(&note_names_when_written);
  const error_code_t result = save_variant_bag(bag_of(2), links.file("link.xml").c_str());
  set_save_step_hook(previous);
  ASSERT_TRUE(result.succeeded());
  EXPECT_EQ(g_link_dir_names, names_t{"link.xml"});
  EXPECT_EQ(g_target_dir_names.size(), 2u) << "the temporary lies beside the linked file";
  EXPECT_TRUE(is_link(links.file("link.xml")));
  EXPECT_EQ(link_text(links.file("link.xml")), target);
  EXPECT_EQ(load_ok(target), bag_of(2));
  EXPECT_EQ(targets.names(), names_t{"real.xml"});
}

TEST(atomic_file_test, saving_through_a_chain_of_relative_links_keeps_every_link) {
  temp_dir_t dir;
  ASSERT_EQ(::mkdir(dir.file("sub").c_str(), 0755), 0);
  save_ok(bag_of(1), dir.file("sub/real.xml"));
  ASSERT_EQ(::symlink("real.xml", dir.file("sub/inner.xml").c_str()), 0);
  ASSERT_EQ(::symlink("sub/inner.xml", dir.file("outer.xml").c_str()), 0);
  save_ok(bag_of(2), dir.file("outer.xml"));
  EXPECT_EQ(link_text(dir.file("outer.xml")), "sub/inner.xml");
  EXPECT_EQ(link_text(dir.file("sub/inner.xml")), "real.xml");
  EXPECT_EQ(load_ok(dir.file("sub/real.xml")), bag_of(2));
  EXPECT_EQ(dir.names(), (names_t{"outer.xml", "sub"}));
}

TEST(atomic_file_test, saving_through_a_dangling_link_creates_the_file_it_names) {
  temp_dir_t dir;
  ASSERT_EQ(::symlink("made.xml", dir.file("link.xml").c_str()), 0);
  save_ok(bag_of(5), dir.file("link.xml"));
  EXPECT_TRUE(is_link(dir.file("link.xml")));
  EXPECT_EQ(load_ok(dir.file("made.xml")), bag_of(5));
  EXPECT_EQ(dir.names(), (names_t{"link.xml", "made.xml"}));
}

TEST(atomic_file_test, saving_through_a_loop_of_links_fails_and_is_logged) {
  temp_dir_t dir;
  ASSERT_EQ(::symlink("b.xml", dir.file("a.xml").c_str()), 0);
  ASSERT_EQ(::symlink("a.xml", dir.file("b.xml").c_str()), 0);
  const test_support::log_capture_t capture;
  const std::string path = dir.file("a.xml");
  EXPECT_TRUE(save_variant_bag(bag_of(1), path.c_str()).failed());
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(ELOOP)), 1u);
  EXPECT_EQ(dir.names(), (names_t{"a.xml", "b.xml"}));
  EXPECT_TRUE(is_link(path));
}

// ---------------------------------------------------------------- protected files

// Editors leave a file without any write bit alone, even when root could write it.
TEST(atomic_file_test, a_file_without_any_write_bit_is_not_replaced) {
  temp_dir_t dir;
  for (const mode_t mode : {0444, 0400, 0550, 0000}) {
    const std::string path = dir.file("locked.xml");
    save_ok(bag_of(1), path);
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    const std::string bytes = read_bytes(path);
    const test_support::log_capture_t capture;
    EXPECT_TRUE(save_variant_bag(bag_of(2), path.c_str()).failed()) << std::oct << mode;
    EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(EACCES)), 1u);
    EXPECT_EQ(read_bytes(path), bytes);
    EXPECT_EQ(test_support::mode_of(path), static_cast<int>(mode));
    EXPECT_EQ(dir.names(), names_t{"locked.xml"});
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    ASSERT_EQ(::unlink(path.c_str()), 0);
  }
}

TEST(atomic_file_test, a_link_to_a_file_without_any_write_bit_keeps_both) {
  temp_dir_t dir;
  save_ok(bag_of(1), dir.file("real.xml"));
  ASSERT_EQ(::chmod(dir.file("real.xml").c_str(), 0444), 0);
  ASSERT_EQ(::symlink("real.xml", dir.file("link.xml").c_str()), 0);
  EXPECT_TRUE(save_variant_bag(bag_of(2), dir.file("link.xml").c_str()).failed());
  EXPECT_TRUE(is_link(dir.file("link.xml")));
  EXPECT_EQ(load_ok(dir.file("real.xml")), bag_of(1));
}

TEST(atomic_file_test, a_file_with_a_write_bit_for_anyone_is_replaced_and_keeps_its_mode) {
  temp_dir_t dir;
  const std::string path = dir.file("group.xml");
  save_ok(bag_of(1), path);
  ASSERT_EQ(::chmod(path.c_str(), 0464), 0);
  save_ok(bag_of(2), path);
  EXPECT_EQ(load_ok(path), bag_of(2));
  EXPECT_EQ(test_support::mode_of(path), 0464);
}

// ---------------------------------------------------------------- killed saves

variant_bag_t large_bag(int marker) {
  variant_bag_t bag;
  for (int i = 0; i < 2000; ++i) {
    bag.put(("entry " + std::to_string(i)).c_str(),
            std::string(20, static_cast<char>('a' + (i + marker) % 26)).c_str());
  }
  bag.put("marker", marker);
  return bag;
}

// Saves the two bags in turn until killed.
[[noreturn]] void save_in_turn(const std::string& path, const variant_bag_t& first,
                               const variant_bag_t& second) {
  for (unsigned i = 0;; ++i) {
    save_variant_bag(i % 2 ? second : first, path.c_str());
  }
}

// Kills a saving process at random moments: after each kill the file is one of the two
// saves byte for byte and loads as that bag, and no more than the one temporary of the killed
// save is left, since each save removes those of dead ones.
TEST(atomic_file_crash_test, a_save_killed_at_any_moment_leaves_the_old_or_the_new_file) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  const variant_bag_t first = large_bag(1);
  const variant_bag_t second = large_bag(2);
  save_ok(second, path);
  const std::string second_bytes = read_bytes(path);
  const auto start = std::chrono::steady_clock::now();
  save_ok(first, path);
  const std::string first_bytes = read_bytes(path);
  // Kills spread over about three saves, however fast this machine and build save.
  const auto save_us =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<long> delay_us(
      0, std::min(50000L, 1000 + 3 * static_cast<long>(save_us.count())));
  int changes = 0;
  std::string last = first_bytes;
  for (int kill = 0; kill < 200; ++kill) {
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      // Starting with the bag not on disk, so that every finished save changes the file.
      const bool first_on_disk = read_bytes(path) == first_bytes;
      save_in_turn(path, first_on_disk ? second : first, first_on_disk ? first : second);
    }
    ::usleep(static_cast<useconds_t>(delay_us(random)));
    ASSERT_EQ(::kill(pid, SIGKILL), 0);
    ASSERT_EQ(wait_for(pid), -SIGKILL);
    const std::string bytes = read_bytes(path);
    ASSERT_TRUE(bytes == first_bytes || bytes == second_bytes)
        << "kill " << kill << ": " << bytes.size() << " bytes";
    ASSERT_EQ(load_ok(path), bytes == first_bytes ? first : second) << "kill " << kill;
    changes += bytes != last;
    last = bytes;
    ASSERT_LE(dir.names().size(), 2u) << "kill " << kill;
  }
  EXPECT_GT(changes, 0) << "no save ever finished before its kill";
  save_ok(first, path);
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

}  // namespace
