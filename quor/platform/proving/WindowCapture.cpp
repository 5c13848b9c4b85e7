#include "quor/platform/proving/WindowCapture.h"

#include "quor/platform/Framework.h"

#include <wincodec.h>

namespace {

// A thread that has another apartment already keeps it: COM can be used all the same.
class ComScope {
public:
    ComScope() : m_result(::CoInitialize(nullptr)) {}
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() {
        if (SUCCEEDED(m_result)) ::CoUninitialize();
    }

private:
    HRESULT m_result;
};

// Top-down rows of 32 bits.
BITMAPINFO bitmapInfo(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

struct Step {
    const char* name;
    HRESULT result;
};

// Runs the steps of one encoding; the first failure ends it and is named.
Step writePng(const WindowPicture& picture, const wchar_t* path) {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICStream> stream;
    ComPointer<IWICBitmapEncoder> encoder;
    ComPointer<IWICBitmapFrameEncode> frame;
    WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
    const UINT width = static_cast<UINT>(picture.width);
    const UINT height = static_cast<UINT>(picture.height);
    const UINT stride = width * 4;
    HRESULT result = ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                        factory.outUntyped());
    if (FAILED(result)) return {"no imaging component", result};
    if (FAILED(result = factory->CreateStream(stream.out())) ||
        FAILED(result = stream->InitializeFromFilename(path, GENERIC_WRITE)))
        return {"the file cannot be opened for writing", result};
    if (FAILED(result = factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.out())) ||
        FAILED(result = encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) ||
        FAILED(result = encoder->CreateNewFrame(frame.out(), nullptr)) || FAILED(result = frame->Initialize(nullptr)) ||
        FAILED(result = frame->SetSize(width, height)) || FAILED(result = frame->SetPixelFormat(&format)))
        return {"no PNG encoder", result};
    auto* bytes = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels.data()));
    if (FAILED(result = frame->WritePixels(height, stride, stride * height, bytes)) ||
        FAILED(result = frame->Commit()) || FAILED(result = encoder->Commit()))
        return {"the picture cannot be written", result};
    return {nullptr, S_OK};
}

HRESULT readPng(LPCWSTR path, WindowPicture& picture) {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    ComPointer<IWICFormatConverter> converter;
    UINT width = 0, height = 0;
    HRESULT result = ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                        reinterpret_cast<void**>(factory.out()));
    if (FAILED(result) ||
        FAILED(result = factory->CreateDecoderFromFilename(path, nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                           decoder.out())) ||
        FAILED(result = decoder->GetFrame(0, frame.out())) ||
        FAILED(result = factory->CreateFormatConverter(converter.out())) ||
        FAILED(result = converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                              nullptr, 0, WICBitmapPaletteTypeCustom)) ||
        FAILED(result = converter->GetSize(&width, &height)))
        return result;
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    picture.pixels.resize(std::size_t{width} * height);
    return converter->CopyPixels(nullptr, width * 4, width * height * 4,
                                 reinterpret_cast<BYTE*>(picture.pixels.data()));
}

bool capture(CDC& from, int width, int height, WindowPicture& picture) {
    CDC memory;
    CBitmap section;
    void* bits = nullptr;
    const BITMAPINFO info = bitmapInfo(width, height);
    if (!memory.CreateCompatibleDC(&from) ||
        !section.Attach(::CreateDIBSection(from, &info, DIB_RGB_COLORS, &bits, nullptr, 0)))
        return false;
    const SelectScope selected(memory, section);
    if (!memory.BitBlt(0, 0, width, height, &from, 0, 0, SRCCOPY)) return false;
    ::GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    picture.width = width;
    picture.height = height;
    picture.pixels.assign(first, first + static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::uint32_t& pixel : picture.pixels) pixel |= 0xFF000000u;
    return true;
}

}  // namespace

bool quorCaptureClientArea(HWND window, WindowPicture& picture) {
    RECT client{};
    if (!::GetClientRect(window, &client) || ::IsRectEmpty(&client)) return false;
    CClientDC from(CWnd::FromHandle(window));
    return capture(from, client.right, client.bottom, picture);
}

bool quorCaptureWindow(HWND window, WindowPicture& picture) {
    CRect whole;
    if (!::GetWindowRect(window, &whole) || whole.IsRectEmpty()) return false;
    CWindowDC from(CWnd::FromHandle(window));
    return capture(from, whole.Width(), whole.Height(), picture);
}

bool quorSavePng(const WindowPicture& picture, LPCWSTR path, CString* error) {
    const ComScope com;
    const bool empty = picture.width <= 0 || picture.height <= 0;
    const Step failure = empty ? Step{"the picture is empty", S_OK} : writePng(picture, path);
    if (failure.name && error) error->Format("%s (0x%08x)", failure.name, static_cast<unsigned>(failure.result));
    return failure.name == nullptr;
}

bool quorReadPng(LPCWSTR path, WindowPicture& picture) {
    const ComScope com;
    if (SUCCEEDED(readPng(path, picture))) return true;
    picture = {};
    return false;
}

bool quorSaveClientAreaPng(HWND window, LPCWSTR path, CString* error) {
    WindowPicture picture;
    if (quorCaptureClientArea(window, picture)) return quorSavePng(picture, path, error);
    if (error) *error = "the window has no client area to capture";
    return false;
}

namespace {

// `save` by the wide form of a narrow path, which its error names.
template <class Save>
bool saveNarrow(LPCTSTR path, CString* error, const Save& save) {
    wchar_t widePath[MAX_PATH];
    CString reason("the path is too long");
    if (::MultiByteToWideChar(CP_ACP, 0, path, -1, widePath, MAX_PATH) && save(widePath, &reason)) return true;
    if (error) error->Format("%s: %s", path, reason.GetString());
    return false;
}

}  // namespace

bool quorSavePng(const WindowPicture& picture, LPCTSTR path, CString* error) {
    return saveNarrow(path, error, [&](LPCWSTR wide, CString* reason) { return quorSavePng(picture, wide, reason); });
}

bool quorSaveClientAreaPng(HWND window, LPCTSTR path, CString* error) {
    return saveNarrow(path, error,
                      [&](LPCWSTR wide, CString* reason) { return quorSaveClientAreaPng(window, wide, reason); });
}

HWND quorShownToolTip() {
    HWND tip = nullptr;
    const auto look = [](HWND window, LPARAM found) -> BOOL {
        char name[32] = "";
        ::GetClassNameA(window, name, sizeof name);
        if (::lstrcmpiA(name, TOOLTIPS_CLASSA) != 0 || !::IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&tip));
    return tip;
}
