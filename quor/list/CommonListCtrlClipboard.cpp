// The selected rows as text, and the clipboard.
#include "quor/list/CommonListCtrlInternal.h"

#include <cstring>

namespace {

// The clipboard, open for a block.
class ClipboardScope {
public:
    explicit ClipboardScope(HWND owner) : m_open(::OpenClipboard(owner)) {}
    ClipboardScope(const ClipboardScope&) = delete;
    ClipboardScope& operator=(const ClipboardScope&) = delete;
    ~ClipboardScope() {
        if (m_open) ::CloseClipboard();
    }
    bool isOpen() const { return m_open != FALSE; }

private:
    BOOL m_open;
};

// A block of movable memory until the clipboard takes it over.
class GlobalBlock {
public:
    explicit GlobalBlock(SIZE_T size) : m_handle(::GlobalAlloc(GMEM_MOVEABLE, size)) {}
    GlobalBlock(const GlobalBlock&) = delete;
    GlobalBlock& operator=(const GlobalBlock&) = delete;
    ~GlobalBlock() {
        if (m_handle) ::GlobalFree(m_handle);
    }
    bool fill(const void* bytes, SIZE_T size) {
        void* memory = m_handle ? ::GlobalLock(m_handle) : nullptr;
        if (!memory) return false;
        std::memcpy(memory, bytes, size);
        ::GlobalUnlock(m_handle);
        return true;
    }
    bool giveToClipboard(UINT format) {
        if (!::SetClipboardData(format, m_handle)) return false;
        m_handle = nullptr;
        return true;
    }

private:
    HGLOBAL m_handle;
};

}  // namespace

void CCommonListCtrl::BuildTable() {
    m_csClipboard.Empty();
    const CHeaderCtrl* header = GetHeaderCtrl();
    const int columns = header ? header->GetItemCount() : 0;
    for (POSITION position = GetFirstSelectedItemPosition(); position;) {
        const int row = GetNextSelectedItem(position);
        for (int place = 0; place < columns; ++place) {
            m_csClipboard += GetItemText(row, place);
            m_csClipboard += '\t';
        }
        m_csClipboard += "\r\n";
    }
    CopyToClipboard();
}

int CCommonListCtrl::CopyToClipboard() {
    const ClipboardScope clipboard(m_hWnd);
    if (!clipboard.isOpen()) return 0;
    ::EmptyClipboard();
    const SIZE_T size = static_cast<SIZE_T>(m_csClipboard.GetLength()) + 1;
    GlobalBlock block(size);
    return block.fill(m_csClipboard.GetString(), size) && block.giveToClipboard(CF_TEXT) ? 1 : 0;
}
