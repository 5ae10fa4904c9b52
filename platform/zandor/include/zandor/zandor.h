#pragma once
/// Catalogs, argument lists, UTF-8 strings, string helpers and the assertion report.
#include <zandor/catalog.h>
#include <zandor/debug.h>
#include <zandor/strings.h>
#include <zandor/types.h>
#include <zandor/ustring.h>
#include <zandor/varg_list.h>
