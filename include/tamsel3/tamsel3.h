#pragma once
/// Everything that tamsel3 exports.
#include <tamsel3/char_rules.h>
#include <tamsel3/common_dialogs.h>
#include <tamsel3/dialog_base.h>
#include <tamsel3/editor_data.h>
#include <tamsel3/editor_settings.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/generic_base.h>
#include <tamsel3/global_show_help.h>
#include <tamsel3/language_info.h>
#include <tamsel3/max_len_options.h>
#include <tamsel3/message.h>
#include <tamsel3/message_window.h>
#include <tamsel3/pref_base.h>
#include <tamsel3/progress.h>
#include <tamsel3/resource.h>
#include <tamsel3/text_helpers.h>
