#include <windows.h>

// This one needs <windows.h> before it.
#include <wincodec.h>

#include <algorithm>

#include "desktop/Animation.h"
#include "desktop/Desk.h"
#include "keys/ComSupport.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT largestSide = 512;
constexpr UINT mostFrames = 200;
constexpr std::size_t mostPixels = 16U << 20;  // of all frames together, 64 MB
constexpr ULONGLONG mostBytes = 4ULL << 20;    // of the file
constexpr unsigned clearBehind = 2;            // a frame's place is cleared before the next one

// A number that describes a picture or a frame; 0 without one.
unsigned numberOf(IWICMetadataQueryReader* reader, const wchar_t* name) {
  PROPVARIANT value;
  PropVariantInit(&value);
  unsigned number = 0;
  if (reader != nullptr && SUCCEEDED(reader->GetMetadataByName(name, &value))) {
    number = value.vt == VT_UI1 ? value.bVal : value.vt == VT_UI2 ? value.uiVal : 0;
  }
  PropVariantClear(&value);
  return number;
}

struct FramePlaceOnCanvas {
  int left = 0;
  int top = 0;
  unsigned delay = 0;  // hundredths of a second
  unsigned disposal = 0;
};

FramePlaceOnCanvas placeOf(IWICBitmapFrameDecode& frame) {
  IWICMetadataQueryReader* found = nullptr;
  if (FAILED(frame.GetMetadataQueryReader(&found))) {
    return {};
  }
  const ComPointer<IWICMetadataQueryReader> reader(found);
  return {.left = static_cast<int>(numberOf(found, L"/imgdesc/Left")),
          .top = static_cast<int>(numberOf(found, L"/imgdesc/Top")),
          .delay = numberOf(found, L"/grctlext/Delay"),
          .disposal = numberOf(found, L"/grctlext/Disposal")};
}

// An empty picture into which all frames are drawn. The file's numbers for its size and for the
// places of frames have 16 bits; only this size is used, and only if it is small.
controls::Bitmap canvasFor(IWICBitmapDecoder& decoder) {
  IWICMetadataQueryReader* found = nullptr;
  if (FAILED(decoder.GetMetadataQueryReader(&found))) {
    return {};
  }
  const ComPointer<IWICMetadataQueryReader> reader(found);
  const unsigned width = numberOf(found, L"/logscrdesc/Width");
  const unsigned height = numberOf(found, L"/logscrdesc/Height");
  if (width > largestSide || height > largestSide) {
    return {};
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

controls::Bitmap pixelsOf(IWICImagingFactory& factory, IWICBitmapFrameDecode& frame) {
  UINT width = 0;
  UINT height = 0;
  IWICFormatConverter* made = nullptr;
  if (FAILED(frame.GetSize(&width, &height)) || width > largestSide || height > largestSide ||
      FAILED(factory.CreateFormatConverter(&made))) {
    return {};
  }
  const ComPointer<IWICFormatConverter> converter(made);
  controls::Bitmap picture(static_cast<int>(width), static_cast<int>(height));
  const UINT rowBytes = width * 4;
  if (FAILED(made->Initialize(&frame, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                              nullptr, 0, WICBitmapPaletteTypeCustom)) ||
      FAILED(made->CopyPixels(nullptr, rowBytes, rowBytes * height,
                              reinterpret_cast<BYTE*>(picture.pixels.data())))) {
    return {};
  }
  return picture;
}

void clearPlace(controls::Bitmap& canvas, const FramePlaceOnCanvas& place,
                const controls::Bitmap& frame) {
  const int bottom = std::min(canvas.height, place.top + frame.height);
  const int right = std::min(canvas.width, place.left + frame.width);
  for (int row = place.top; row < bottom; ++row) {
    for (int column = place.left; column < right; ++column) {
      canvas.pixels[static_cast<std::size_t>(row * canvas.width + column)] = 0;
    }
  }
}

// Drawn over what is there. Both have their colors multiplied by alpha.
void drawOver(controls::Bitmap& canvas, const FramePlaceOnCanvas& place,
              const controls::Bitmap& frame) {
  for (int row = 0; row < frame.height && place.top + row < canvas.height; ++row) {
    for (int column = 0; column < frame.width && place.left + column < canvas.width; ++column) {
      const std::uint32_t pixel = frame.at(column, row);
      if (pixel >> 24 != 0) {
        canvas.pixels[static_cast<std::size_t>((place.top + row) * canvas.width + place.left +
                                               column)] = pixel;
      }
    }
  }
}

Animation framesOf(IWICImagingFactory& factory, IWICBitmapDecoder& decoder) {
  Animation animation;
  controls::Bitmap canvas = canvasFor(decoder);
  UINT count = 0;
  if (canvas.pixels.empty() || FAILED(decoder.GetFrameCount(&count))) {
    return animation;
  }
  const std::size_t most = std::min<std::size_t>(mostFrames, mostPixels / canvas.pixels.size());
  for (UINT number = 0; number < std::min<std::size_t>(count, most); ++number) {
    IWICBitmapFrameDecode* found = nullptr;
    if (FAILED(decoder.GetFrame(number, &found))) {
      break;
    }
    const ComPointer<IWICBitmapFrameDecode> frame(found);
    const controls::Bitmap pixels = pixelsOf(factory, *found);
    if (pixels.pixels.empty()) {
      break;
    }
    const FramePlaceOnCanvas place = placeOf(*found);
    drawOver(canvas, place, pixels);
    constexpr unsigned usualDelay = 10;
    animation.push_back({canvas, 10 * (place.delay == 0 ? usualDelay : place.delay)});
    if (place.disposal == clearBehind) {
      clearPlace(canvas, place, pixels);
    }
  }
  return animation;
}

// The decoder of this one format. If the file could choose, it could reach any installed decoder.
ComPointer<IWICBitmapDecoder> decoderOf(IWICImagingFactory& factory, const std::string& file) {
  IWICStream* opened = nullptr;
  if (FAILED(factory.CreateStream(&opened))) {
    return nullptr;
  }
  const ComPointer<IWICStream> stream(opened);
  STATSTG about{};
  if (FAILED(opened->InitializeFromFilename(Wide(file).get(), GENERIC_READ)) ||
      FAILED(opened->Stat(&about, STATFLAG_NONAME)) || about.cbSize.QuadPart > mostBytes) {
    return nullptr;
  }
  IWICBitmapDecoder* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WICGifDecoder, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IWICBitmapDecoder, reinterpret_cast<void**>(&made)))) {
    return nullptr;
  }
  ComPointer<IWICBitmapDecoder> decoder(made);
  if (FAILED(made->Initialize(opened, WICDecodeMetadataCacheOnDemand))) {
    return nullptr;
  }
  return decoder;
}

}  // namespace

Animation readAnimation(const std::string& file) {
  IWICImagingFactory* factory = nullptr;
  if (file.empty() ||
      FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IWICImagingFactory, reinterpret_cast<void**>(&factory)))) {
    return {};
  }
  const ComPointer<IWICImagingFactory> owned(factory);
  const auto decoder = decoderOf(*factory, file);
  return decoder == nullptr ? Animation() : framesOf(*factory, *decoder);
}

}  // namespace zelvreg::desktop
