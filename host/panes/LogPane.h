// The log at the bottom of the frame: what the library and the host report, one line each, with the time of day.
// Every line goes to a file too, at once, so that it is there when the process ends in an unusual way.
//
// The file is open from `openFile` to the end of the process; lines that come before the pane has a window are kept
// and shown when it has one.
#pragma once

#include "quor/platform/Framework.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace terminal {

// The log itself. One per process, made on first use: the library may log before any window exists.
class Log {
public:
    static Log& instance();

    // Starts the file, named in UTF-8, anew. A file that cannot be written is no failure of the program: the pane still
    // shows the lines.
    void openFile(const std::string& path);

    // Adds one line, in UTF-8 or in code page 1252. Line ends inside `text` become blanks. A null text adds nothing.
    void add(const char* text);

    // The window that shows the lines, or null; kept lines are handed over at once.
    void attach(class CLogPane* pane);

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Closer> m_file;
    std::vector<std::string> m_early;
    CLogPane* m_pane = nullptr;
};

class CLogPane : public CWnd {
public:
    BOOL CreatePane(CWnd* parent, UINT id);
    void appendLine(const std::string& line);

private:
    // What the user sees of the log: its end, or the line at the top and what is selected.
    struct View {
        bool atEnd;
        DWORD top, from, to;  // characters: the first that shows, what is selected
    };
    View view() const;
    void show(const View& view);
    int OnCreate(CREATESTRUCT* create);
    void OnDestroy();
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    BOOL OnEraseBkgnd(CDC* dc);
    HBRUSH OnCtlColor(CDC* dc, CWnd* wnd, UINT kind);

    HWND m_edit = nullptr;
    CFont m_font;
    CBrush m_brush;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
