// A tick of a brick bar: 100,000 texts for six bricks in slices of 10 ms, a second and more in all; each slice sets its
// texts and pumps until everything is painted. Only the work is clocked, not the wait for the next slice. Afterwards
// the bar must show what a whole repaint draws.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "quor/bars/ZTBrickBar.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kBricks = 6;
constexpr int kTicks = 100000;
constexpr int kSlices = 100;
constexpr int kRepeats = 3;
constexpr double kSliceMicroseconds = 10000;
constexpr int kBarWidth = 1200, kBarHeight = 26;

class Bar {
public:
    Bar() {
        m_owner.CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "bricks",
                         WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, kBarWidth, 100), nullptr, 0);
        CArray<CString> captions;
        for (const char* caption : {"Index", "Banks", "Advances", "Declines", "Day", "Rate"}) captions.Add(caption);
        CRect place(0, 0, kBarWidth, kBarHeight);
        check(m_bar.CreateBrickBars(&m_owner, kBricks, captions, &place, 1) == 1, "there is no bar");
        pumpMessages();
    }
    ~Bar() {
        m_bar.DestroyWindow();
        m_owner.DestroyWindow();
    }

    // Microseconds of work for all ticks.
    double run(const std::vector<CString>& texts) {
        double worked = 0;
        const double begin = microseconds();
        for (int slice = 0, tick = 0; slice < kSlices; ++slice) {
            const double start = microseconds();
            for (; tick < kTicks / kSlices * (slice + 1); ++tick)
                m_bar.SetText(tick % kBricks, texts[static_cast<std::size_t>(tick) % texts.size()]);
            pumpMessages();
            worked += microseconds() - start;
            check(!brick(slice % kBricks).GetUpdateRect(nullptr), "a brick is not painted");
            const double next = begin + (slice + 1) * kSliceMicroseconds;
            if (microseconds() < next) ::Sleep(static_cast<DWORD>((next - microseconds()) / 1000) + 1);
        }
        check(microseconds() - begin >= 1e6, "the run was too short");
        checkTitles(texts);
        return worked;
    }

private:
    CHolderView& brick(int number) { return *static_cast<CHolderView*>(m_bar.GetSplitterWnd()->GetPane(0, number)); }

    void checkTitles(const std::vector<CString>& texts) {
        for (int tick = kTicks - kBricks; tick < kTicks; ++tick) {
            CString shown, caption;
            m_bar.GetTextWithCaption(tick % kBricks, shown);
            m_bar.GetCaption(tick % kBricks, caption);
            const CString& text = texts[static_cast<std::size_t>(tick) % texts.size()];
            check(shown == caption + " : " + text, "a brick has another text");
        }
        const std::vector<BYTE> stands = pixels();
        m_bar.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        check(stands == pixels(), "the bar does not show its texts");
    }

    std::vector<BYTE> pixels() {
        CClientDC screen(&m_owner);
        CDC memory;
        CBitmap bitmap;
        memory.CreateCompatibleDC(&screen);
        bitmap.CreateCompatibleBitmap(&screen, kBarWidth, kBarHeight);
        const SelectScope selected(memory, bitmap);
        const HDC all = ::GetDCEx(m_owner, nullptr, DCX_CACHE);  // the children too
        ::BitBlt(memory, 0, 0, kBarWidth, kBarHeight, all, 0, 0, SRCCOPY);
        ::ReleaseDC(m_owner, all);
        BITMAP form{};
        bitmap.GetBitmap(&form);
        std::vector<BYTE> bytes(static_cast<std::size_t>(form.bmWidthBytes) * static_cast<std::size_t>(form.bmHeight));
        bitmap.GetBitmapBits(static_cast<DWORD>(bytes.size()), bytes.data());
        check(std::any_of(bytes.begin(), bytes.end(), [&](BYTE byte) { return byte != bytes[0]; }), "nothing shows");
        return bytes;
    }

    CWnd m_owner;
    CZTBrickBar m_bar;
};

}  // namespace

void benchBricks(Figures& figures) {
    std::vector<CString> texts;
    for (int i = 0; i < 997; ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%d.%02d", 22000 + i, i % 100);
        texts.emplace_back(text);
    }
    Bar bar;
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) times.push_back(bar.run(texts) / kTicks);
    figures.push_back({"brick_tick_us", median(times), "us", "six bricks, painted every 10 ms", 12, 3});
}
