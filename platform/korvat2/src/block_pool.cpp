#include <korvat2/block_pool.h>

#include <atomic>
#include <mutex>
#include <new>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define KORVAT2_POOL_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVAT2_POOL_ASAN 1
#endif
#endif

#ifdef KORVAT2_POOL_ASAN
#include <sanitizer/asan_interface.h>
#define KORVAT2_POISON(block, size) ASAN_POISON_MEMORY_REGION(block, size)
#define KORVAT2_UNPOISON(block, size) ASAN_UNPOISON_MEMORY_REGION(block, size)
#else
#define KORVAT2_POISON(block, size) ((void)(block), (void)(size))
#define KORVAT2_UNPOISON(block, size) ((void)(block), (void)(size))
#endif

namespace korvat2::_internal {

namespace {

constexpr std::size_t granule = 16;
constexpr std::size_t class_count = pooled_block_limit / granule;
// Blocks travel between threads in batches of this many, so the shared store's lock is
// taken once per batch.
constexpr std::size_t batch_size = 32;
// The shared store keeps at most this many batches per size; beyond, blocks go back to the
// global allocator, so a burst doesn't hold its memory for good.
constexpr std::size_t max_shared_batches = 64;

struct block_t {
  block_t* next;
};

constexpr std::size_t class_of(std::size_t size) { return size == 0 ? 0 : (size - 1) / granule; }
constexpr std::size_t bytes_of(std::size_t size_class) { return (size_class + 1) * granule; }

void* new_block(std::size_t size_class) { return ::operator new(bytes_of(size_class)); }

void delete_block(void* block, std::size_t /*size_class*/) { ::operator delete(block); }

struct block_list_t {
  block_t* head = nullptr;
  std::size_t count = 0;

  void push(block_t* block, std::size_t bytes) {
    block->next = head;
    head = block;
    ++count;
    // The link stays readable, so that the leak checker can follow the chain.
    KORVAT2_POISON(reinterpret_cast<char*>(block) + sizeof(block_t), bytes - sizeof(block_t));
  }
  block_t* pop(std::size_t bytes) {
    block_t* block = head;
    KORVAT2_UNPOISON(block, bytes);
    head = block->next;
    --count;
    return block;
  }
};

void delete_blocks(block_t* head, std::size_t size_class) {
  while (head) {
    KORVAT2_UNPOISON(head, bytes_of(size_class));
    block_t* next = head->next;
    delete_block(head, size_class);
    head = next;
  }
}

// Full batches given back by the threads, per size.
struct shared_store_t {
  std::mutex mutex[class_count];
  std::vector<block_t*> batches[class_count];
  // Batches held per size, read without the lock: a thread finding none goes to the global
  // allocator at once, which it does often while a queue of posts builds up.
  std::atomic<std::size_t> held[class_count] = {};

  void give(std::size_t size_class, block_t* batch) {
    {
      std::lock_guard<std::mutex> lock(mutex[size_class]);
      if (batches[size_class].size() < max_shared_batches) {
        batches[size_class].push_back(batch);
        held[size_class].store(batches[size_class].size(), std::memory_order_relaxed);
        return;
      }
    }
    delete_blocks(batch, size_class);
  }
  block_t* take(std::size_t size_class) {
    if (held[size_class].load(std::memory_order_relaxed) == 0) {
      return nullptr;
    }
    std::lock_guard<std::mutex> lock(mutex[size_class]);
    if (batches[size_class].empty()) {
      return nullptr;
    }
    block_t* batch = batches[size_class].back();
    batches[size_class].pop_back();
    held[size_class].store(batches[size_class].size(), std::memory_order_relaxed);
    return batch;
  }
};

shared_store_t& shared_store() {
  // Never destroyed: blocks may be freed by static destructors after it would be.
  static shared_store_t* store = new shared_store_t;
  return *store;
}

// One thread's blocks: `ready` to hand out (its own frees go here first), `freed` collects
// the overflow until it is a batch for the shared store.
struct thread_cache_t {
  block_list_t ready[class_count];
  block_list_t freed[class_count];

  void put(std::size_t size_class, block_t* block) {
    const std::size_t bytes = bytes_of(size_class);
    if (ready[size_class].count < batch_size) {
      ready[size_class].push(block, bytes);
      return;
    }
    block_list_t& overflow = freed[size_class];
    overflow.push(block, bytes);
    if (overflow.count == batch_size) {
      shared_store().give(size_class, overflow.head);
      overflow = block_list_t();
    }
  }
  void flush() {
    for (std::size_t size_class = 0; size_class < class_count; ++size_class) {
      for (block_list_t* list : {&ready[size_class], &freed[size_class]}) {
        delete_blocks(list->head, size_class);
        *list = block_list_t();
      }
    }
  }
};

// Initial-exec: read straight from the thread pointer, without a call, on the fast paths.
__attribute__((tls_model("initial-exec"))) thread_local thread_cache_t* t_cache = nullptr;
__attribute__((tls_model("initial-exec"))) thread_local bool t_cache_gone = false;

// Gives the thread's blocks back when it ends.
struct cache_keeper_t {
  thread_cache_t* cache = nullptr;
  ~cache_keeper_t() {
    t_cache_gone = true;
    t_cache = nullptr;
    if (cache) {
      cache->flush();
      delete cache;
    }
  }
};

thread_local cache_keeper_t t_keeper;

// Null once the thread is ending, or when there is no memory for a cache: the blocks then
// come from and go to the global allocator.
thread_cache_t* current_cache() {
  if (!t_cache && !t_cache_gone) {
    try {
      t_cache = new thread_cache_t;
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
    t_keeper.cache = t_cache;
  }
  return t_cache;
}

void* allocate_slow(std::size_t size_class) {
  const std::size_t bytes = bytes_of(size_class);
  thread_cache_t* cache = current_cache();
  if (!cache) {
    return new_block(size_class);
  }
  block_list_t& ready = cache->ready[size_class];
  if (block_t* batch = shared_store().take(size_class)) {
    ready.head = batch;
    ready.count = batch_size;
    return ready.pop(bytes);
  }
  return new_block(size_class);
}

}  // namespace

void* pool_allocate(std::size_t size) {
  if (size > pooled_block_limit) {
    return ::operator new(size);
  }
  const std::size_t size_class = class_of(size);
  if (thread_cache_t* cache = t_cache) {
    block_list_t& ready = cache->ready[size_class];
    if (ready.head) {
      return ready.pop(bytes_of(size_class));
    }
  }
  return allocate_slow(size_class);
}

void pool_free(void* block, std::size_t size) noexcept {
  if (!block) {
    return;
  }
  if (size > pooled_block_limit) {
    ::operator delete(block);
    return;
  }
  const std::size_t size_class = class_of(size);
  thread_cache_t* cache = t_cache ? t_cache : current_cache();
  if (!cache) {
    delete_block(block, size_class);
    return;
  }
  cache->put(size_class, static_cast<block_t*>(block));
}

void pool_trim() {
  shared_store_t& store = shared_store();
  for (std::size_t size_class = 0; size_class < class_count; ++size_class) {
    std::vector<block_t*> batches;
    {
      std::lock_guard<std::mutex> lock(store.mutex[size_class]);
      batches.swap(store.batches[size_class]);
      store.held[size_class].store(0, std::memory_order_relaxed);
    }
    for (block_t* batch : batches) {
      delete_blocks(batch, size_class);
    }
  }
}

std::size_t pool_shared_blocks() {
  shared_store_t& store = shared_store();
  std::size_t blocks = 0;
  for (std::size_t size_class = 0; size_class < class_count; ++size_class) {
    std::lock_guard<std::mutex> lock(store.mutex[size_class]);
    blocks += store.batches[size_class].size() * batch_size;
  }
  return blocks;
}

}  // namespace korvat2::_internal
