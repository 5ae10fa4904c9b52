/* A seat with a pointer and a keyboard for the headless backend, which has none: GTK
 * clients then get wl_pointer and wl_keyboard, and the shell gives new windows keyboard
 * focus. Loaded by weston with --modules=<path of this module>. */
#include <libweston/libweston.h>

#include <stdlib.h>
#include <wayland-server-core.h>
#include <wayland-util.h>

/* Exported by libweston but declared only in its private headers. */
void weston_seat_init(struct weston_seat* seat, struct weston_compositor* ec, const char* seat_name);
void weston_seat_init_pointer(struct weston_seat* seat);
int weston_seat_init_keyboard(struct weston_seat* seat, struct xkb_keymap* keymap);
void weston_seat_release(struct weston_seat* seat);

struct test_seat {
  struct weston_seat seat;
  struct wl_listener compositor_destroy;
};

static void release_seat(struct wl_listener* listener, void* data) {
  struct test_seat* test_seat = wl_container_of(listener, test_seat, compositor_destroy);

  (void)data;
  wl_list_remove(&test_seat->compositor_destroy.link);
  weston_seat_release(&test_seat->seat);
  free(test_seat);
}

WL_EXPORT int wet_module_init(struct weston_compositor* compositor, int* argc, char* argv[]) {
  struct test_seat* test_seat = calloc(1, sizeof *test_seat);

  (void)argc;
  (void)argv;
  if (!test_seat)
    return -1;
  weston_seat_init(&test_seat->seat, compositor, "default");
  weston_seat_init_pointer(&test_seat->seat);
  /* No keymap given: the compositor's default one, from its rule names (us). */
  if (weston_seat_init_keyboard(&test_seat->seat, NULL) < 0) {
    weston_seat_release(&test_seat->seat);
    free(test_seat);
    return -1;
  }
  test_seat->compositor_destroy.notify = release_seat;
  wl_signal_add(&compositor->destroy_signal, &test_seat->compositor_destroy);
  return 0;
}
