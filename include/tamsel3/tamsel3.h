#pragma once
/// Everything that tamsel3 exports.
#include <tamsel3/char_rules.h>
#include <tamsel3/resource.h>
#include <tamsel3/text_helpers.h>
