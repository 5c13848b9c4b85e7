// Lists that end at any moment of their life.
//
// A life (start, the user's changes, the end) is run once undisturbed: what the list would store at each of its moments
// is a whole layout. Then it is run again for each moment and each call of the host's store, with a disturbance there.
// What stands stored in the end must be whole: each value is one of an undisturbed moment, and none is gone.
#pragma once

#include "quor/list/CommonListCtrl.h"
#include "support/FakeHost.h"
#include "support/MessageBoxAnswerer.h"

#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace test {

class EveryMoment {
public:
    // The life starts from what the fake host has stored now, and tells its moments by calling moment(). It must cope
    // with a window that is gone.
    explicit EveryMoment(std::function<void()> life) : m_life(std::move(life)), m_before(stored()) {}

    void moment(CCommonListCtrl& list) {
        if (fakeHost().onStore) fakeHost().onStore(0);
        if (!m_undisturbed || !list.m_hWnd) return;
        const FakeHost::Settings now = stored();
        const auto onStore = std::exchange(fakeHost().onStore, {});
        list.SaveState();
        note();
        stored() = now;
        fakeHost().onStore = onStore;
    }

    // At each moment one of the list's windows goes, or the store refuses a write. `alive` gives the list while its
    // life goes on, else null.
    void disturbWindowsAndWrites(const std::function<CCommonListCtrl*()>& alive, CWnd& owner) {
        const auto goes = [&](const char* name, auto victimOf) {
            disturb(name, [&](int) {
                CCommonListCtrl* const list = alive();
                CWnd* const victim = list && list->m_hWnd ? victimOf(*list) : nullptr;
                if (victim && victim->m_hWnd) victim->DestroyWindow();
                return true;
            });
        };
        const MessageBoxAnswerer boxes;
        goes("the list goes", [](CCommonListCtrl& list) -> CWnd* { return &list; });
        goes("its header goes", [](CCommonListCtrl& list) -> CWnd* { return list.GetHeaderCtrl(); });
        goes("its tool tips go", [](CCommonListCtrl& list) -> CWnd* { return &list.m_ToolTip; });
        goes("its owner goes", [&](CCommonListCtrl&) -> CWnd* { return &owner; });
        disturb("a write fails", [](int operation) { return operation == 0; });
        for (const std::string& text : boxes.texts()) EXPECT_EQ(text, "Error while saving column profile");
    }

    int moments() const { return m_moments; }

private:
    static FakeHost::Settings& stored() { return fakeHost().settings; }
    // Runs the life once for each moment; `act` gets the store's operation and answers as the store does.
    void disturb(const char* name, const std::function<bool(int operation)>& act) {
        if (m_whole.empty()) runUndisturbed();
        for (int moment = 0; moment < m_moments; ++moment) {
            SCOPED_TRACE(std::string(name) + " at moment " + std::to_string(moment));
            int call = 0;
            run([&](int operation) { return call++ != moment || act(operation); });
            for (const auto& [key, value] : m_before) {
                const auto found = stored().find(key);
                ASSERT_NE(found, stored().end()) << key.first << " " << key.second;
                ASSERT_TRUE(m_whole[key].contains(found->second))
                    << key.first << " " << key.second << "=" << found->second;
            }
        }
    }

    void note() {
        for (const auto& [key, value] : stored()) m_whole[key].insert(value);
    }
    void run(const std::function<bool(int)>& onStore) {
        stored() = m_before;
        fakeHost().onStore = onStore;
        m_life();
        fakeHost().onStore = {};
    }
    void runUndisturbed() {
        m_undisturbed = true;
        note();
        run([this](int) {
            note();
            return ++m_moments > 0;
        });
        note();
        m_undisturbed = false;
    }

    std::function<void()> m_life;
    const FakeHost::Settings m_before;
    std::map<FakeHost::Key, std::set<std::string>> m_whole;
    bool m_undisturbed = false;
    int m_moments = 0;
};

}  // namespace test
