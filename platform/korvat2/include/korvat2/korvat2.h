#pragma once
/// Value types, counted pointers, signals, bags and bag files, paths, errors and the
/// few system services of the tamsel3 family.
#include <korvat2/bag_file.h>
#include <korvat2/error.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/iterator.h>
#include <korvat2/path.h>
#include <korvat2/pointers.h>
#include <korvat2/signal.h>
#include <korvat2/signal_snapshot.h>
#include <korvat2/system.h>
#include <korvat2/system_editor.h>
#include <korvat2/threading.h>
#include <korvat2/variant.h>
#include <korvat2/variant_bag.h>
