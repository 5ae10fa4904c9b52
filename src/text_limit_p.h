#pragma once
// Holding a text field at its length limit inside the toolkit's own insertion.
#include <functional>

class wxTextCtrl;

namespace tamsel3 {

/// Keeps `field` at `limit()` characters while the toolkit inserts text, before any text
/// event is sent: an insertion that would go over keeps what fits, and `reached` runs
/// once for it, when the kept part is in (and its text event was sent), before the
/// insertion returns.
/// Connects once per field; a repeated call keeps the first connection. False where the
/// toolkit offers no such hook, and nothing is connected. GUI thread.
bool hold_text_at_limit(wxTextCtrl* field, std::function<long()> limit, std::function<void()> reached);

/// Undoes `hold_text_at_limit`; nothing happens for a field that isn't held.
void release_text_limit(wxTextCtrl* field);

}  // namespace tamsel3
