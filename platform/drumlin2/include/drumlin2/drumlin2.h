#pragma once
/// Collection of analysis results: the controller's defaults.
#include <drumlin2/collection_controller.h>
