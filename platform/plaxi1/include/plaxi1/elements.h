#pragma once
/// The element toolkit: a retained tree of small elements drawn into a wx window.
#include <plaxi1/element.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/element_flags.h>
#include <plaxi1/element_shapes.h>
