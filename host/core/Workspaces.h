// The terminal's workspaces: named arrangements of the panes below the watch, one of them shown. Panes exist once; a
// workspace says which of them show, how large, and what their lists show beyond what each list stores by itself.
//
// Names are unique, and there is always at least one workspace. No window.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace terminal {

class SettingsFile;

struct PaneShare {
    std::string pane;
    double share = 1;  // of the room of its row, against its neighbours there
    bool shown = true;
    bool operator==(const PaneShare&) const = default;
};

// Of the frame, in pixels of the screen. Without a size the frame stays where it is.
struct WindowPlace {
    int left = 0, top = 0, width = 0, height = 0;
    bool maximized = false;
    bool operator==(const WindowPlace&) const = default;
};

struct ListChoice {
    std::string list;
    std::vector<int> order;  // columnIndex from left to right, as dragged; empty: as the list has them
    int sortColumn = -1;     // columnIndex of a plain sort; -1 none
    bool falling = false;
    std::vector<std::pair<int, std::string>> filters;  // columnIndex and text
    bool operator==(const ListChoice&) const = default;
};

struct Workspace {
    std::string name;
    std::vector<PaneShare> panes;
    WindowPlace place;
    std::string watch;  // that is shown; empty: whichever is
    std::vector<ListChoice> lists;
    bool operator==(const Workspace&) const = default;
};

class Workspaces {
public:
    // One workspace, shown.
    explicit Workspaces(Workspace first);

    const std::vector<Workspace>& all() const { return m_all; }
    std::size_t shown() const { return m_shown; }
    const Workspace& present() const { return m_all[m_shown]; }
    // What the present one has become; its name stays.
    void keep(Workspace changed);
    void show(std::size_t place);

    static constexpr std::size_t kMost = 100;

    // Behind the last one, as the present one is arranged, under the first free name of "Workspace 2", "Workspace 3"
    // ...; its place. It is not shown yet. Where there are kMost none is made: the place of the shown one.
    std::size_t add();
    // Of the workspace at `from`, put before the one at `to`; under a name that nobody has: a number in brackets goes
    // on from 2. Where there are kMost none is made: the place of the shown one.
    std::size_t copy(std::size_t from, std::size_t to, const std::string& name);
    // False, and nothing changed: the name is empty, another one's, or cannot be stored.
    bool rename(std::size_t place, const std::string& name);
    void move(std::size_t from, std::size_t to);
    // False: it is the last one. The neighbour at its right is shown where it was, else that at its left.
    bool close(std::size_t place);

    // Takes what is stored; what is not there or cannot be read stays as it is. A pane that the first workspace does
    // not have is passed over, one that is not stored has its share there.
    void read(const SettingsFile& settings);
    void write(SettingsFile& settings) const;

private:
    bool isFree(const std::string& name) const;

    std::vector<Workspace> m_all;
    std::size_t m_shown = 0;
};

}  // namespace terminal
