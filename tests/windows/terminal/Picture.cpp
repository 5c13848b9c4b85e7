#include "Picture.h"

#include <windows.h>
#include <wincodec.h>

#include <algorithm>
#include <unordered_set>

namespace {
template <class Interface>
class Com {
public:
    ~Com() {
        if (m_object) m_object->Release();
    }
    Com() = default;
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    Interface** out() { return &m_object; }
    Interface* operator->() const { return m_object; }
    Interface* get() const { return m_object; }

private:
    Interface* m_object = nullptr;
};

bool decode(const std::string& path, Picture& picture) {
    Com<IWICImagingFactory> factory;
    Com<IWICBitmapDecoder> decoder;
    Com<IWICBitmapFrameDecode> frame;
    Com<IWICFormatConverter> converter;
    const std::wstring wide(path.begin(), path.end());
    if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(factory.out()))) ||
        FAILED(factory->CreateDecoderFromFilename(wide.c_str(), nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                  decoder.out())) ||
        FAILED(decoder->GetFrame(0, frame.out())) || FAILED(factory->CreateFormatConverter(converter.out())) ||
        FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom)))
        return false;
    UINT width = 0, height = 0;
    if (FAILED(converter->GetSize(&width, &height))) return false;
    picture.pixels.resize(std::size_t{width} * height);
    if (FAILED(converter->CopyPixels(nullptr, width * 4, static_cast<UINT>(picture.pixels.size() * 4),
                                     reinterpret_cast<BYTE*>(picture.pixels.data()))))
        return false;
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    return true;
}
}  // namespace

double Picture::shareOf(std::uint32_t rgb) const {
    if (pixels.empty()) return 0;
    const auto same =
        std::count_if(pixels.begin(), pixels.end(), [rgb](std::uint32_t pixel) { return (pixel & 0xFFFFFF) == rgb; });
    return static_cast<double>(same) / static_cast<double>(pixels.size());
}

std::size_t Picture::distinctColours() const {
    return std::unordered_set<std::uint32_t>(pixels.begin(), pixels.end()).size();
}

Picture readPicture(const std::string& path) {
    Picture picture;
    const bool started = SUCCEEDED(::CoInitialize(nullptr));
    if (!decode(path, picture)) picture = {};
    if (started) ::CoUninitialize();
    return picture;
}
