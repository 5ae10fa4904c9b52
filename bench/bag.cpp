// Load and save of korvat2's bag files beside pugixml's own parse and write of the same bytes:
// bags of many names, a chain of nested bags as deep as a file may hold, and large texts.
// Loads also report their peak of heap memory per byte of the file.
#include "ratio_reporter.h"

#include <korvat2/bag_file.h>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <malloc.h>
#include <stdlib.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <new>
#include <string>

namespace {

// The heap in use and its peak. Every operator new and every block of pugixml (which
// allocates through its own hooks) is counted.
std::atomic<long> g_heap_bytes{0};
std::atomic<long> g_heap_peak{0};

void* counted_malloc(std::size_t size) {
  void* block = std::malloc(size ? size : 1);
  if (block) {
    const long now = g_heap_bytes += static_cast<long>(::malloc_usable_size(block));
    long peak = g_heap_peak.load();
    while (now > peak && !g_heap_peak.compare_exchange_weak(peak, now)) {
    }
  }
  return block;
}

void counted_free(void* block) {
  if (block) {
    g_heap_bytes -= static_cast<long>(::malloc_usable_size(block));
    std::free(block);
  }
}

}  // namespace

// GCC sees the free() of the counting delete inlined next to a new and takes them for a mismatch.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size) {
  void* block = counted_malloc(size);
  if (!block) {
    throw std::bad_alloc();
  }
  return block;
}
void operator delete(void* block) noexcept { counted_free(block); }
void operator delete(void* block, std::size_t) noexcept { counted_free(block); }

namespace {

using korvat2::variant_bag_t;

// One scratch folder for the run, removed at exit.
struct scratch_dir_t {
  scratch_dir_t() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tamsel3_bench.XXXXXX").string();
    if (::mkdtemp(pattern.data())) {
      path = pattern;
    }
  }
  ~scratch_dir_t() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::string path;
};

const scratch_dir_t& scratch() {
  static const scratch_dir_t dir;
  return dir;
}

variant_bag_t many_names(long count) {
  variant_bag_t bag;
  for (long i = 0; i < count; ++i) {
    bag.put(("setting_" + std::to_string(i)).c_str(), static_cast<int>(i));
  }
  return bag;
}

variant_bag_t deep_chain(long depth) {
  variant_bag_t bag;
  bag.put("leaf", 1);
  for (long level = 1; level < depth; ++level) {
    variant_bag_t outer;
    outer.put("level", static_cast<int>(level));
    outer.add_variant_bag("child", std::move(bag));
    bag = std::move(outer);
  }
  return bag;
}

// `count` texts of one MiB each, with characters that need escaping.
variant_bag_t large_texts(long count) {
  std::string text;
  while (text.size() < (1u << 20)) {
    text += "line with <markup> & \"quotes\" \xE2\x82\xAC\n";
  }
  variant_bag_t bag;
  for (long i = 0; i < count; ++i) {
    bag.put(("text_" + std::to_string(i)).c_str(), text);
  }
  return bag;
}

using maker_t = variant_bag_t (*)(long);

// The bag of a shape and size, and the file it was saved to; both made once per run.
struct sample_t {
  variant_bag_t bag;
  std::string path;
  long bytes = 0;
};

const sample_t& sample(const char* shape, maker_t make, long size) {
  static std::map<std::string, sample_t> samples;
  const std::string key = std::string(shape) + "_" + std::to_string(size);
  auto found = samples.find(key);
  if (found == samples.end()) {
    sample_t made{make(size), scratch().path + "/" + key + ".xml", 0};
    if (korvat2::save_variant_bag(made.bag, made.path.c_str()).failed()) {
      std::fprintf(stderr, "cannot save %s\n", made.path.c_str());
      std::exit(1);
    }
    made.bytes = static_cast<long>(std::filesystem::file_size(made.path));
    found = samples.emplace(key, std::move(made)).first;
  }
  return found->second;
}

const unsigned parse_options = (pugi::parse_default | pugi::parse_ws_pcdata_single) & ~pugi::parse_eol;

// Times `work` and reports the peak of heap it added, per byte of the sample file.
void measure(benchmark::State& state, const sample_t& input, const std::function<void()>& work) {
  long peak = 0;
  for (auto _ : state) {
    const long base = g_heap_bytes.load();
    g_heap_peak = base;
    work();
    peak = std::max(peak, g_heap_peak.load() - base);
  }
  state.SetBytesProcessed(state.iterations() * input.bytes);
  state.counters["peak_heap_per_file_byte"] = static_cast<double>(peak) / static_cast<double>(input.bytes);
}

void load_ours(benchmark::State& state, const char* shape, maker_t make) {
  const sample_t& input = sample(shape, make, state.range(0));
  measure(state, input, [&] {
    variant_bag_t bag;
    if (korvat2::load_variant_bag(bag, input.path.c_str(), "").failed()) {
      state.SkipWithError("load failed");
    }
    benchmark::DoNotOptimize(bag);
  });
}

void load_pugixml(benchmark::State& state, const char* shape, maker_t make) {
  const sample_t& input = sample(shape, make, state.range(0));
  measure(state, input, [&] {
    pugi::xml_document document;
    if (!document.load_file(input.path.c_str(), parse_options, pugi::encoding_utf8)) {
      state.SkipWithError("parse failed");
    }
    benchmark::DoNotOptimize(document);
  });
}

void save_ours(benchmark::State& state, const char* shape, maker_t make) {
  const sample_t& input = sample(shape, make, state.range(0));
  const std::string path = input.path + ".saved";
  measure(state, input, [&] {
    if (korvat2::save_variant_bag(input.bag, path.c_str()).failed()) {
      state.SkipWithError("save failed");
    }
  });
}

void save_pugixml(benchmark::State& state, const char* shape, maker_t make) {
  const sample_t& input = sample(shape, make, state.range(0));
  pugi::xml_document document;
  document.load_file(input.path.c_str(), parse_options, pugi::encoding_utf8);
  const std::string path = input.path + ".pugixml";
  measure(state, input, [&] {
    if (!document.save_file(path.c_str(), "", pugi::format_raw, pugi::encoding_utf8)) {
      state.SkipWithError("write failed");
    }
  });
}

using bench_t = void (*)(benchmark::State&, const char*, maker_t);

void register_shape(const char* shape, maker_t make, std::initializer_list<long> sizes) {
  const std::pair<const char*, bench_t> kinds[] = {{"load_%s/korvat2", load_ours},
                                                   {"load_%s/pugixml", load_pugixml},
                                                   {"save_%s/korvat2", save_ours},
                                                   {"save_%s/pugixml", save_pugixml}};
  for (const auto& [pattern, run] : kinds) {
    char name[64];
    std::snprintf(name, sizeof name, pattern, shape);
    for (const long size : sizes) {
      benchmark::RegisterBenchmark(name, run, shape, make)->Arg(size)->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  pugi::set_memory_management_functions(counted_malloc, counted_free);
  register_shape("names", many_names, {80000, 1000000});
  register_shape("deep", deep_chain, {korvat2::max_bag_depth / 2, korvat2::max_bag_depth});
  register_shape("texts", large_texts, {8});
  return bench_support::run_with_ratios(argc, argv, "korvat2", {"pugixml"},
                                        bench_support::time_basis_t::wall);
}
