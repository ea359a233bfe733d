// libcurl and the thirty libraries behind it take a fifth of the resident program's memory, and a
// shop that delivers into a folder never needs them. They are loaded with the first call that gets
// here: these functions stand in for libcurl's own, which the program is not linked with.

#include <curl/curl.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdarg>
#include <iterator>

// Macros that check types where they are called.
#undef curl_easy_setopt
#undef curl_easy_getinfo

namespace {

/// Of the binary interface that the headers describe.
constexpr const char* kLibrary = "libcurl.so.4";

void* library() {
  static void* const handle = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  return handle;
}

/// All that stand in here.
constexpr const char* kFunctions[] = {
    "curl_global_init",    "curl_global_cleanup",   "curl_easy_init",
    "curl_easy_reset",     "curl_easy_cleanup",     "curl_easy_setopt",
    "curl_easy_getinfo",   "curl_multi_init",       "curl_multi_cleanup",
    "curl_multi_poll",     "curl_multi_add_handle", "curl_multi_remove_handle",
    "curl_multi_perform",  "curl_multi_info_read",  "curl_slist_append",
    "curl_slist_free_all",
};

bool isUsable() {
  return library() != nullptr &&
         std::all_of(std::begin(kFunctions), std::end(kFunctions),
                     [](const char* name) { return dlsym(library(), name) != nullptr; });
}

/// The library's own function of that name; the first argument tells its type. Nothing but
/// curl_global_init() is called before that has found the library usable.
template <typename Function>
Function* loaded(Function* /*standIn*/, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library(), name));
}

}  // namespace

extern "C" {

CURLcode curl_global_init(long flags) {
  if (!isUsable()) return CURLE_FAILED_INIT;
  return loaded(&curl_global_init, "curl_global_init")(flags);
}

void curl_global_cleanup() {
  loaded(&curl_global_cleanup, "curl_global_cleanup")();
}

CURL* curl_easy_init() {
  return loaded(&curl_easy_init, "curl_easy_init")();
}

void curl_easy_reset(CURL* easy) {
  loaded(&curl_easy_reset, "curl_easy_reset")(easy);
}

void curl_easy_cleanup(CURL* easy) {
  loaded(&curl_easy_cleanup, "curl_easy_cleanup")(easy);
}

CURLM* curl_multi_init() {
  return loaded(&curl_multi_init, "curl_multi_init")();
}

CURLMcode curl_multi_cleanup(CURLM* multi) {
  return loaded(&curl_multi_cleanup, "curl_multi_cleanup")(multi);
}

CURLMcode curl_multi_add_handle(CURLM* multi, CURL* easy) {
  return loaded(&curl_multi_add_handle, "curl_multi_add_handle")(multi, easy);
}

CURLMcode curl_multi_remove_handle(CURLM* multi, CURL* easy) {
  return loaded(&curl_multi_remove_handle, "curl_multi_remove_handle")(multi, easy);
}

CURLMcode curl_multi_perform(CURLM* multi, int* running) {
  return loaded(&curl_multi_perform, "curl_multi_perform")(multi, running);
}

CURLMsg* curl_multi_info_read(CURLM* multi, int* left) {
  return loaded(&curl_multi_info_read, "curl_multi_info_read")(multi, left);
}

CURLMcode curl_multi_poll(CURLM* multi, curl_waitfd* extra, unsigned count, int milliseconds,
                          int* ready) {
  return loaded(&curl_multi_poll, "curl_multi_poll")(multi, extra, count, milliseconds, ready);
}

curl_slist* curl_slist_append(curl_slist* list, const char* text) {
  return loaded(&curl_slist_append, "curl_slist_append")(list, text);
}

void curl_slist_free_all(curl_slist* list) {
  loaded(&curl_slist_free_all, "curl_slist_free_all")(list);
}

// Whatever stands behind the option (long, curl_off_t, pointer) is one machine word here.
static_assert(sizeof(void*) == sizeof(long) && sizeof(void*) == sizeof(curl_off_t));

CURLcode curl_easy_setopt(CURL* easy, CURLoption option, ...) {
  std::va_list list;
  va_start(list, option);
  void* const value = va_arg(list, void*);
  va_end(list);
  return loaded(&curl_easy_setopt, "curl_easy_setopt")(easy, option, value);
}

CURLcode curl_easy_getinfo(CURL* easy, CURLINFO info, ...) {
  std::va_list list;
  va_start(list, info);
  void* const value = va_arg(list, void*);
  va_end(list);
  return loaded(&curl_easy_getinfo, "curl_easy_getinfo")(easy, info, value);
}

}  // extern "C"
