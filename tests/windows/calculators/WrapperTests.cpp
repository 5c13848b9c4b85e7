// The wrappers of the calculation servers over real activation of COM classes: what arrives in which place, what comes
// back, and what happens when a server fails, is not registered, or cannot be loaded.
//
// Changes the registration of the real servers, so it runs in a Wine prefix of its own.
#include "quor/calculators/QuorCOMWrapApp.h"
#include "quor/platform/win/ComError.h"
#include "support/MessageBoxAnswerer.h"
#include "support/WindowFixture.h"
#include "windows/calculators/RecordingServer.h"

#include <algorithm>
#include <functional>
#include <ole2.h>
#include <process.h>
#include <string>

namespace {

// One bit a server that was created.
constexpr int kOptionCreated = 1, kMarginCreated = 2;

int createBoth() {
    bool option = true, margin = true;
    quorCalculators().GetSpan(&option);
    quorCalculators().GetSpanCom(&margin);
    return (option ? kOptionCreated : 0) | (margin ? kMarginCreated : 0);
}

// The wrappers' servers are created once for the process.
struct Wrappers : test::WindowFixture {
    Wrappers() {
        static const bool created = [] {
            test::serveRecording();
            return createBoth() == (kOptionCreated | kMarginCreated);
        }();
        EXPECT_TRUE(created);
        test::answerWith(S_OK);
    }
    CQuorCOMWrapApp& app = quorCalculators();
    double o[6] = {};
    void prices(const auto& call) { call(&o[0], &o[1], &o[2], &o[3], &o[4], &o[5]); }

    // Every wrapper, and what the server gets of it.
    const std::pair<const char*, std::function<void()>> rows[16] = {
        {"option 1: 1.5 2.25 3.5 4.5 5.5 6.5 7.5 8 -9 32767 out out out out out out\n",
         [&] {
             prices([&](auto... out) { app.CalcPriceWra(1.5, 2.25f, 3.5, 4.5, 5.5, 6.5, 7.5, 8, -9, 32767, out...); });
         }},
        {"option 4: 1.5 0.1000000015 3.5 4.5 5.5 6 7.5 8.5 out out out out out out\n",  // a float is widened
         [&] { prices([&](auto... out) { app.CalculateBSPriceWra(1.5, 0.1f, 3.5, 4.5, 5.5, 6, 7.5, 8.5, out...); }); }},
        {"option 3: 1.5 2.5 3.5 4.5 5.5 6.5 7.5 8 out\n",
         [&] { app.CalculateImpVolatilityWra(1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, 8, &o[0]); }},
        {"margin 10: 'otn' '101' 'N/A'\n", [&] { app.CreatePortfolioWra(); }},
        {"margin 11: 'otn' '101' 'N/A'\n", [&] { app.SelectPortfolioWra(); }},
        {"margin 5:\n", [&] { app.DeleteWra(); }},
        {"margin 2:\n", [&] { app.CalculateWra(); }},
        {"margin 18:\n", [&] { app.GetErrorDetailsWra(); }},
        // Four names for one reading.
        {"margin 6: out\n", [&] { o[0] = app.GetPortfLongFutValueWra(); }},
        {"margin 6: out\n", [&] { o[0] = app.GetPortfShortFutValueWra(); }},
        {"margin 6: out\n", [&] { o[0] = app.GetPortfLongOptValueWra(); }},
        {"margin 6: out\n", [&] { o[0] = app.GetPortfShortOptValueWra(); }},
        {"margin 16: 1 1 out\n", [&] { o[0] = app.GetPortfTotReqWra(); }},
        // The fifth text is sent twice, three are dropped; the numbers are cut to 16 bits, the quantity is not.
        {"margin 14: 'NSCCL' 'NSE' 'c' 1 'e' 'e' 2 3.5f 4\n",
         [&] { app.SetPortfPositionWra("x", "y", "c", 1, "e", "f", 2, 3.5f, 4); }},
        {"margin 14: 'NSCCL' 'NSE' '' 1 '' '' -32768 0.1000000015f -2147483648\n",
         [&] { app.SetPortfPositionWra("", "", "", 65537, "", "", 32768, 0.1f, -2147483647 - 1); }},
        {"margin 14: 'NSCCL' 'NSE' 'a\xA7 b' 0 '\xE9' '\xE9' 0 0f 0\n",
         [&] { app.SetPortfPositionWra("", "", "a\xA7 b", 0, "\xE9", "", 0, 0, 0); }},
    };
};

TEST_F(Wrappers, SendEveryValueToItsPlaceAndThrowEveryFailure) {
    test::MessageBoxAnswerer answerer;
    for (const auto& [recorded, call] : rows) {
        std::ranges::fill(o, 0);
        test::answerWith(E_NOTIMPL);
        try {
            call();
            ADD_FAILURE() << recorded << " returned";
        } catch (const _com_error& error) {
            EXPECT_EQ(error.Error(), E_NOTIMPL) << recorded;
            EXPECT_EQ(error.ErrorInfo(), nullptr) << recorded;
        }
        for (const double untouched : o) EXPECT_EQ(untouched, 0) << recorded;
        test::answerWith(S_OK);
        call();
        EXPECT_EQ(test::recordedCalls(), recorded);
        double number = 0;
        for (const double output : o) number += output == number + 1;
        EXPECT_EQ(number, std::ranges::count(std::string_view(recorded), 'u')) << recorded;  // one in each "out"
    }
    EXPECT_EQ(answerer.texts(), std::vector<std::string>{""}) << "the details of an error";
}

TEST_F(Wrappers, TheLibrarysObjectIsNotTheProgramsApplication) {
    EXPECT_EQ(app.m_hInstance, ::GetModuleHandleA("QuorControls.dll"));
    EXPECT_EQ(AfxGetApp(), nullptr);
    CWinApp program("program");
    EXPECT_EQ(AfxGetApp(), &program);
    EXPECT_EQ(program.m_hInstance, ::GetModuleHandleA(nullptr));
    EXPECT_TRUE(app.InitInstance());
    CQuorCOMWrapApp other;
    EXPECT_EQ(other.GetPortfTotReqWra(), 1) << "a host may have an object of its own: the servers are the process's";
}

// ---- Processes: one without a server is seen in a child of the test

// Runs this executable again as a child with the mode; its exit code.
DWORD runChild(const char* mode) {
    char program[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, program, MAX_PATH);
    return static_cast<DWORD>(::_spawnl(_P_WAIT, program, "child", "--child", mode, static_cast<const char*>(nullptr)));
}

// The child's work, by mode; its exit code.
int childMain(const std::string& mode) {
    if (mode == "create") return createBoth();
    quorCalculators().DeleteWra();  // without a server
    return 0;
}

const struct RealServer {
    const char *dll, *program, *classId, *typeLibrary;
} kRealServers[] = {
    {"QuorOptionServer.dll", "Quor.OptionCalculator", "{0C332960-AC64-11D7-B457-00D0B7BD012C}",
     "{3E5B1B0A-52C4-4E7B-8E0B-6F3C2D9A7E10}"},
    {"QuorMarginServer.dll", "Quor.MarginCalculator", "{5B17F3FC-FBCD-4208-AF23-AA13B4717257}",
     "{8D0F6A34-9C1E-4B57-A2D3-1B7E5C4F6011}"},
};

// Twice, as an installer might.
void callBoth(const char* entry) {
    for (const RealServer& server : kRealServers) {
        const HMODULE dll = ::LoadLibraryA(server.dll);
        const auto function =
            reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void (*)()>(::GetProcAddress(dll, entry)));
        ASSERT_TRUE(function) << server.dll;
        for (int twice = 0; twice < 2; ++twice) EXPECT_EQ(function(), S_OK);
    }
}

bool keyExists(const std::string& key) {
    HKEY opened = nullptr;
    const std::string path = "Software\\Classes\\" + key;
    if (::RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    ::RegCloseKey(opened);
    return true;
}

TEST(Activation, TheRealServersRegisterAndRemoveThemselves) {
    for (const bool registered : {true, false}) {
        callBoth(registered ? "DllRegisterServer" : "DllUnregisterServer");
        for (const RealServer& server : kRealServers) {
            EXPECT_EQ(keyExists(std::string("CLSID\\") + server.classId), registered);
            EXPECT_EQ(keyExists(std::string("TypeLib\\") + server.typeLibrary), registered);
            CLSID found = {};
            EXPECT_EQ(::CLSIDFromProgID(_bstr_t(server.program), &found) == S_OK, registered);
        }
        EXPECT_EQ(runChild("create"), registered ? DWORD{kOptionCreated | kMarginCreated} : 0u);
    }
    callBoth("DllRegisterServer");
}

TEST(Activation, AWrapperWithoutItsServerFaults) { EXPECT_EQ(runChild("fault"), EXCEPTION_ACCESS_VIOLATION); }

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[1]) == "--child") return childMain(argv[2]);
    test::endOnCrash();
    test::useOwnDesktop();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
