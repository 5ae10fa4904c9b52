// A "don't ask again" answer kept in a storage: one bag of booleans, a value per name.
#include <tamsel3/stored_check_box.h>

#include <tamsel3/text_helpers.h>

#include <korvat2/variant_bag.h>
#include <quern2/storage.h>

namespace tamsel3 {
namespace {

korvat2::sptr_t<quern2::IPropertyStorage> storage_or_default(
    korvat2::sptr_t<quern2::IPropertyStorage> storage) {
  if (storage) {
    return storage;
  }
  const korvat2::sptr_t<quern2::IGlobalStorage> global = quern2::IGlobalStorage::get();
  return global ? global->getChild(stored_check_box_t::default_child) : nullptr;
}

korvat2::variant_bag_t read_answers(const korvat2::sptr_t<quern2::IPropertyStorage>& storage) {
  return storage ? storage->readBag(stored_check_box_t::answers_key, korvat2::variant_bag_t())
                 : korvat2::variant_bag_t();
}

}  // namespace

const char* const stored_check_box_t::answers_key = "dont_ask_again";
const char* const stored_check_box_t::default_child = "message_answers";

stored_check_box_t::stored_check_box_t(korvat2::sptr_t<quern2::IPropertyStorage> storage, std::string name,
                                       std::string label)
    : m_storage(storage_or_default(std::move(storage))), m_name(std::move(name)), m_label(std::move(label)) {}

stored_check_box_t::~stored_check_box_t() = default;

bool stored_check_box_t::reset_all(korvat2::sptr_t<quern2::IPropertyStorage> storage) {
  storage = storage_or_default(std::move(storage));
  if (!storage) {
    return false;
  }
  // Nothing stored is nothing to forget; no folder is made for it.
  if (!storage->hasBag(answers_key)) {
    return true;
  }
  return storage->writeBag(answers_key, korvat2::variant_bag_t()).succeeded();
}

void stored_check_box_t::add_ref() { m_count.fetch_add(1, std::memory_order_relaxed); }

void stored_check_box_t::release() {
  if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    delete this;
  }
}

std::string stored_check_box_t::get_key() const { return m_name; }

void stored_check_box_t::load_state() { m_pending.reset(); }

void stored_check_box_t::reset_state() {
  m_pending.reset();
  if (stored_answer()) {
    store(false);
  }
}

bool stored_check_box_t::is_checked() const { return m_pending ? *m_pending : stored_answer(); }

void stored_check_box_t::set_checked(bool checked) { m_pending = checked; }

void stored_check_box_t::save_state() {
  if (m_pending) {
    store(*m_pending);
  }
}

// Looked up when shown, so that a catalog registered after the definition was made counts.
std::string stored_check_box_t::get_label() const {
  return m_label.empty() ? translate_message("msg.dont_show_again", ZANDOR_2_16::generic::varg_list())
                         : m_label;
}

bool stored_check_box_t::stored_answer() const {
  const korvat2::variant_t answer = read_answers(m_storage).get_variant(m_name.c_str(), korvat2::variant_t());
  return answer.can_get<bool>() && answer.get<bool>();
}

// Rewrites the whole bag, so a damaged file gives way to one that holds this answer.
// A failed write (logged by the storage) keeps the answer pending for this run.
void stored_check_box_t::store(bool checked) {
  if (!m_storage) {
    return;
  }
  korvat2::variant_bag_t answers = read_answers(m_storage);
  if (checked) {
    answers.put(m_name.c_str(), true);
  } else {
    answers.remove(m_name.c_str());
  }
  if (m_storage->writeBag(answers_key, answers).succeeded()) {
    m_pending.reset();
  }
}

}  // namespace tamsel3
