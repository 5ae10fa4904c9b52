#pragma once
// Everything of the grid library.
#include <ombrelgrid8/grid.h>
#include <ombrelpropgrid2/base_grid.h>
#include <ombrelpropgrid2/grid_model.h>
#include <ombrelpropgrid2/prop_item.h>
#include <ombrelpropgrid2/property.h>
#include <ombrelpropgrid2/property_editor.h>
