#pragma once
/// The windowing toolkit of the tamsel3 family: UI settings and styles, pictures,
/// layout and picture loaders, modal dialogs, GUI tasks, tooltips, text wrapping and the
/// element toolkit.
#include <plaxi1/animation_frames.h>
#include <plaxi1/elements.h>
#include <plaxi1/icon_button.h>
#include <plaxi1/image_loader.h>
#include <plaxi1/modal.h>
#include <plaxi1/picture.h>
#include <plaxi1/placement.h>
#include <plaxi1/press_tracker.h>
#include <plaxi1/resource_loader.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/style.h>
#include <plaxi1/tasks.h>
#include <plaxi1/text_metrics.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
