// A plain child window that tells what it sees.
#pragma once

#include "support/CallRecorder.h"
#include "support/WindowFixture.h"

// Records "pre", "proc <message>" for the watched messages and "end" (PostNcDestroy).
class Probe : public CWnd {
public:
    explicit Probe(test::CallRecorder& recorder) : m_recorder(recorder) {}

    BOOL createIn(CWnd& parent, UINT id = 7, LPCSTR windowClass = nullptr, DWORD style = WS_CHILD | WS_VISIBLE) {
        return CWnd::Create(windowClass, "probe", style, CRect(0, 0, 100, 50), &parent, id);
    }

    bool watchAll = false;

protected:
    void PreSubclassWindow() override { m_recorder.record("pre", m_hWnd != nullptr); }
    void PostNcDestroy() override { m_recorder.record("end", m_hWnd != nullptr); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (watchAll) m_recorder.record("proc", message);
        return CWnd::WindowProc(message, wParam, lParam);
    }

    test::CallRecorder& m_recorder;
};
