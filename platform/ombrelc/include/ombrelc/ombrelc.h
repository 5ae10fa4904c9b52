#pragma once
// Everything of the visual element library.
#include <ombrelc7/control.h>
#include <ombrelc7/geometry.h>
#include <ombrelc7/object.h>
#include <ombrelc7/picture.h>
#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelcfrw7/boxes.h>
#include <ombrelcfrw7/button.h>
#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/clipboard.h>
#include <ombrelcfrw7/event_log.h>
#include <ombrelcfrw7/gauge.h>
#include <ombrelcfrw7/image.h>
#include <ombrelcfrw7/message_box.h>
#include <ombrelcfrw7/scroll_container.h>
#include <ombrelcfrw7/visual_element.h>
