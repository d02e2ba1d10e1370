// SPDX-License-Identifier: MIT

#include <tools/draw/png.h>

#include <cntrformats/errors.h>

#if defined(CNTR_PNG)

#include <dlfcn.h>
#include <librsvg/rsvg.h>

#include <cmath>
#include <memory>
#include <ostream>

namespace tool {

using namespace formats;

namespace {

/// The functions called here, from librsvg and the libraries that it depends on.
struct Functions {
  decltype(&g_memory_input_stream_new_from_data) openText = nullptr;
  decltype(&g_object_unref) releaseObject = nullptr;
  decltype(&g_error_free) releaseError = nullptr;
  decltype(&rsvg_handle_new_from_stream_sync) read = nullptr;
  decltype(&rsvg_handle_get_intrinsic_size_in_pixels) sizeOf = nullptr;
  decltype(&rsvg_handle_render_document) render = nullptr;
  decltype(&cairo_image_surface_create) makeSurface = nullptr;
  decltype(&cairo_surface_status) statusOf = nullptr;
  decltype(&cairo_surface_destroy) releaseSurface = nullptr;
  decltype(&cairo_create) beginDrawing = nullptr;
  decltype(&cairo_destroy) endDrawing = nullptr;
  decltype(&cairo_surface_write_to_png_stream) write = nullptr;
  decltype(&cairo_status_to_string) describe = nullptr;
};

template <typename Function>
void find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(::dlsym(library, name));
  if (function == nullptr) {
    throw FileError(std::string("cannot be written: librsvg has no function ") + name);
  }
}

Functions load() {
  void* library = ::dlopen("librsvg-2.so.2", RTLD_NOW);
  if (library == nullptr) {
    throw FileError("cannot be written: PNG pictures need librsvg, which is not installed");
  }
  Functions found;
  find(library, "g_memory_input_stream_new_from_data", found.openText);
  find(library, "g_object_unref", found.releaseObject);
  find(library, "g_error_free", found.releaseError);
  find(library, "rsvg_handle_new_from_stream_sync", found.read);
  find(library, "rsvg_handle_get_intrinsic_size_in_pixels", found.sizeOf);
  find(library, "rsvg_handle_render_document", found.render);
  find(library, "cairo_image_surface_create", found.makeSurface);
  find(library, "cairo_surface_status", found.statusOf);
  find(library, "cairo_surface_destroy", found.releaseSurface);
  find(library, "cairo_create", found.beginDrawing);
  find(library, "cairo_destroy", found.endDrawing);
  find(library, "cairo_surface_write_to_png_stream", found.write);
  find(library, "cairo_status_to_string", found.describe);
  return found;
}

const Functions& functions() {
  static const Functions loaded = load();
  return loaded;
}

/// Throws the error that a function has reported.
[[noreturn]] void fail(GError* error) {
  const std::string reason = error->message;
  functions().releaseError(error);
  throw FileError("cannot be drawn: " + reason);
}

void requireSuccess(cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw FileError(std::string("cannot be drawn: ") + functions().describe(status));
}

struct ReleaseObject {
  void operator()(void* object) const { functions().releaseObject(object); }
};
struct ReleaseSurface {
  void operator()(cairo_surface_t* surface) const { functions().releaseSurface(surface); }
};
struct EndDrawing {
  void operator()(cairo_t* drawing) const { functions().endDrawing(drawing); }
};

using Text = std::unique_ptr<GInputStream, ReleaseObject>;
using SvgPicture = std::unique_ptr<RsvgHandle, ReleaseObject>;
using Surface = std::unique_ptr<cairo_surface_t, ReleaseSurface>;
using Drawing = std::unique_ptr<cairo_t, EndDrawing>;

SvgPicture read(const std::string& svg) {
  const Text text(functions().openText(svg.data(), static_cast<gssize>(svg.size()), nullptr));
  GError* error = nullptr;
  SvgPicture picture(
      functions().read(text.get(), nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
  if (!picture) fail(error);
  return picture;
}

Surface rendered(RsvgHandle* picture) {
  RsvgRectangle area{};
  functions().sizeOf(picture, &area.width, &area.height);
  Surface surface(functions().makeSurface(CAIRO_FORMAT_RGB24,
                                          static_cast<int>(std::lround(area.width)),
                                          static_cast<int>(std::lround(area.height))));
  requireSuccess(functions().statusOf(surface.get()));
  const Drawing drawing(functions().beginDrawing(surface.get()));
  GError* error = nullptr;
  if (functions().render(picture, drawing.get(), &area, &error) == 0) fail(error);
  return surface;
}

cairo_status_t append(void* out, const unsigned char* bytes, unsigned count) {
  static_cast<std::ostream*>(out)->write(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

void requirePng() { functions(); }

void writePng(std::ostream& out, const std::string& svg) {
  const SvgPicture picture = read(svg);
  const Surface surface = rendered(picture.get());
  requireSuccess(functions().write(surface.get(), append, &out));
}

}  // namespace tool

#else

namespace tool {

using namespace formats;

void requirePng() {
  throw FileError(
      "cannot be written: this program was built without PNG pictures; SVG needs nothing");
}

void writePng(std::ostream&, const std::string&) { requirePng(); }

}  // namespace tool

#endif
