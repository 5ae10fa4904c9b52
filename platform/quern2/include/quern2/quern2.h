#pragma once
/// Message catalogs, product locations and configuration storages.
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>
#include <quern2/storage.h>
