// The wrappers of the calculation servers over real activation of COM classes: what arrives in which place, what comes
// back, and what happens when a server fails, is not registered, or cannot be loaded.
//
// Changes the registration of both classes, with a recording server and with the real ones, so it runs in a Wine prefix
// of its own.
#include "platform/win/ComError.h"
#include "src/calculators/QuorCOMWrapApp.h"
#include "support/MessageBoxAnswerer.h"
#include "support/WindowFixture.h"
#include "windows/calculators/CalculatorChild.h"
#include "windows/calculators/RecordingServer.h"

#include <cmath>
#include <fstream>
#include <string>

namespace {

using test::runChild;

HMODULE load(const char* name) {
    const HMODULE module = ::LoadLibraryA(name);
    EXPECT_TRUE(module) << name;
    return module;
}

template <class Function>
Function functionOf(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(::GetProcAddress(module, name)));
}

HRESULT callEntry(HMODULE module, const char* name) { return functionOf<HRESULT(WINAPI*)()>(module, name)(); }

// The recording server, registered from the first use on; the wrappers' servers are created once for the process.
class Recorder {
public:
    static Recorder& get() {
        static Recorder recorder;
        return recorder;
    }
    std::string calls() const { return functionOf<RecordedCallsFunction>(m_module, "recordedCalls")(); }
    void answerWith(HRESULT hr, bool errorInfo = false) {
        functionOf<AnswerWithFunction>(m_module, "answerWith")(hr, errorInfo);
    }

private:
    Recorder() : m_module(load("RecordingServer.dll")) {
        EXPECT_EQ(callEntry(m_module, "DllRegisterServer"), S_OK);
        bool option = false, margin = false;
        quorCalculators().GetSpan(&option);
        quorCalculators().GetSpanCom(&margin);
        EXPECT_TRUE(option);
        EXPECT_TRUE(margin);
    }
    HMODULE m_module;
};

void unregisterAll() { EXPECT_EQ(callEntry(load("RecordingServer.dll"), "DllUnregisterServer"), S_OK); }

struct Wrappers : test::WindowFixture {
    Wrappers() { recorder.answerWith(S_OK); }
    Recorder& recorder = Recorder::get();
    CQuorCOMWrapApp& app = quorCalculators();
    double o[6] = {};
};

// --- Where the values go -------------------------------------------------------------------------------------------

TEST_F(Wrappers, PriceArgumentsKeepTheirOrder) {
    app.CalcPriceWra(1.5, 2.25f, 3.5, 4.5, 5.5, 6.5, 7.5, 8, -9, 32767, &o[0], &o[1], &o[2], &o[3], &o[4], &o[5]);
    EXPECT_EQ(recorder.calls(), "option 1: 1.5 2.25 3.5 4.5 5.5 6.5 7.5 8 -9 32767 out out out out out out\n");
    for (int i = 0; i < 6; ++i) EXPECT_EQ(o[i], i + 1);
}

TEST_F(Wrappers, TheFloatIsWidened) {
    app.CalcPriceWra(0, 0.1f, 0, 0, 0, 0, 0, 0, 0, 0, &o[0], &o[1], &o[2], &o[3], &o[4], &o[5]);
    app.CalculateBSPriceWra(0, 0.1f, 0, 0, 0, 0, 0, 0, &o[0], &o[1], &o[2], &o[3], &o[4], &o[5]);
    EXPECT_EQ(recorder.calls(),
              "option 1: 0 0.1000000015 0 0 0 0 0 0 0 0 out out out out out out\n"
              "option 4: 0 0.1000000015 0 0 0 0 0 0 out out out out out out\n");
}

TEST_F(Wrappers, ImpliedVolatilityArgumentsKeepTheirOrder) {
    app.CalculateImpVolatilityWra(1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, 8, &o[0]);
    EXPECT_EQ(recorder.calls(), "option 3: 1.5 2.5 3.5 4.5 5.5 6.5 7.5 8 out\n");
    EXPECT_EQ(o[0], 1);
}

TEST_F(Wrappers, BlackScholesArgumentsKeepTheirOrder) {
    app.CalculateBSPriceWra(1.5, 2.5f, 3.5, 4.5, 5.5, 6, 7.5, 8.5, &o[0], &o[1], &o[2], &o[3], &o[4], &o[5]);
    EXPECT_EQ(recorder.calls(), "option 4: 1.5 2.5 3.5 4.5 5.5 6 7.5 8.5 out out out out out out\n");
    for (int i = 0; i < 6; ++i) EXPECT_EQ(o[i], i + 1);
}

TEST_F(Wrappers, ThePortfolioHasFixedNames) {
    app.CreatePortfolioWra();
    app.SelectPortfolioWra();
    EXPECT_EQ(app.CalculateWra(), S_OK);
    app.DeleteWra();
    EXPECT_EQ(recorder.calls(), "margin 10: 'otn' '101' 'N/A'\nmargin 11: 'otn' '101' 'N/A'\nmargin 2:\nmargin 5:\n");
}

TEST_F(Wrappers, CalculateReturnsTheSuccessCode) {
    recorder.answerWith(S_FALSE);
    EXPECT_EQ(app.CalculateWra(), S_FALSE);
    recorder.answerWith(0x00040201);
    EXPECT_EQ(app.CalculateWra(), 0x00040201);
}

TEST_F(Wrappers, APositionSendsTheFifthTextTwiceAndDropsThree) {
    app.SetPortfPositionWra("x", "y", "c", 1, "e", "f", 2, 3.5f, 4);
    EXPECT_EQ(recorder.calls(), "margin 14: 'NSCCL' 'NSE' 'c' 1 'e' 'e' 2 3.5f 4\n");
}

TEST_F(Wrappers, APositionsNumbersAreCutTo16BitsTheQuantityIsNot) {
    app.SetPortfPositionWra("", "", "", 65537, "", "", 32768, 0.1f, -2147483647 - 1);
    app.SetPortfPositionWra("", "", "", -1, "", "", -65535, -2.5f, 2147483647);
    EXPECT_EQ(recorder.calls(),
              "margin 14: 'NSCCL' 'NSE' '' 1 '' '' -32768 0.1000000015f -2147483648\n"
              "margin 14: 'NSCCL' 'NSE' '' -1 '' '' 1 -2.5f 2147483647\n");
}

TEST_F(Wrappers, TextsAreOfCodePage1252) {
    app.SetPortfPositionWra("", "", "a\xA7 b", 0, "\xE9", "", 0, 0, 0);
    EXPECT_EQ(recorder.calls(), "margin 14: 'NSCCL' 'NSE' 'a\xA7 b' 0 '\xE9' '\xE9' 0 0f 0\n");
}

TEST_F(Wrappers, FourNamesForOneReading) {
    EXPECT_EQ(app.GetPortfLongFutValueWra(), 1);
    EXPECT_EQ(app.GetPortfShortFutValueWra(), 2);
    EXPECT_EQ(app.GetPortfLongOptValueWra(), 3);
    EXPECT_EQ(app.GetPortfShortOptValueWra(), 4);
    EXPECT_EQ(app.GetPortfTotReqWra(), 5);
    EXPECT_EQ(recorder.calls(), "margin 6: out\nmargin 6: out\nmargin 6: out\nmargin 6: out\nmargin 16: 1 1 out\n");
}

TEST_F(Wrappers, ErrorDetailsShowAnEmptyBox) {
    test::MessageBoxAnswerer answerer;
    app.GetErrorDetailsWra();
    EXPECT_EQ(answerer.texts(), std::vector<std::string>{""});
    EXPECT_EQ(recorder.calls(), "margin 18:\n");
}

// --- Failures ------------------------------------------------------------------------------------------------------

// Every wrapper, with the interface whose error info is asked for.
struct WrapperCall {
    const char* name;
    bool option;
    void (*call)(CQuorCOMWrapApp& app, double* o);
};

const WrapperCall kWrappers[] = {
    {"CalcPrice", true,
     [](auto& a, double* o) { a.CalcPriceWra(1, 1, 1, 1, 1, 1, 1, 1, 1, 1, o, o + 1, o + 2, o + 3, o + 4, o + 5); }},
    {"CalculateImpVolatility", true,
     [](auto& a, double* o) { a.CalculateImpVolatilityWra(1, 1, 1, 1, 1, 1, 1, 1, o); }},
    {"CalculateBSPrice", true,
     [](auto& a, double* o) { a.CalculateBSPriceWra(1, 1, 1, 1, 1, 1, 1, 1, o, o + 1, o + 2, o + 3, o + 4, o + 5); }},
    {"Calculate", false, [](auto& a, double*) { a.CalculateWra(); }},
    {"Delete", false, [](auto& a, double*) { a.DeleteWra(); }},
    {"LongFut", false, [](auto& a, double*) { a.GetPortfLongFutValueWra(); }},
    {"ShortFut", false, [](auto& a, double*) { a.GetPortfShortFutValueWra(); }},
    {"LongOpt", false, [](auto& a, double*) { a.GetPortfLongOptValueWra(); }},
    {"ShortOpt", false, [](auto& a, double*) { a.GetPortfShortOptValueWra(); }},
    {"CreatePortfolio", false, [](auto& a, double*) { a.CreatePortfolioWra(); }},
    {"SelectPortfolio", false, [](auto& a, double*) { a.SelectPortfolioWra(); }},
    {"SetPortfPosition", false, [](auto& a, double*) { a.SetPortfPositionWra("", "", "", 0, "", "", 0, 0, 0); }},
    {"GetPortfTotReq", false, [](auto& a, double*) { a.GetPortfTotReqWra(); }},
    {"GetErrorDetails", false, [](auto& a, double*) { a.GetErrorDetailsWra(); }},
};

constexpr char kOptionInterface[] = "{0C33295F-AC64-11D7-B457-00D0B7BD012C}";
constexpr char kMarginInterface[] = "{40A9F92B-445D-4154-8A74-5DF019FA5EE5}";

std::string textOf(const GUID& id) {
    wchar_t text[39] = L"";
    ::StringFromGUID2(id, text, 39);
    return static_cast<const char*>(_bstr_t(text));
}

TEST_F(Wrappers, AFailingServerIsThrownWithItsInterfacesErrorInfo) {
    for (const WrapperCall& wrapper : kWrappers) {
        recorder.answerWith(E_INVALIDARG, true);
        const std::string interfaceId = wrapper.option ? kOptionInterface : kMarginInterface;
        try {
            wrapper.call(app, o);
            ADD_FAILURE() << wrapper.name << " returned";
        } catch (const _com_error& error) {
            EXPECT_EQ(error.Error(), E_INVALIDARG) << wrapper.name;
            EXPECT_STREQ(static_cast<const char*>(error.Description()), "refused by the recorder");
            EXPECT_EQ(textOf(error.GUID_()), interfaceId);
        }
        const std::string asked = "error info of " + interfaceId + "\n", calls = recorder.calls();
        EXPECT_TRUE(calls.ends_with(asked)) << wrapper.name << ": " << calls;
    }
    for (const double untouched : o) EXPECT_EQ(untouched, 0);
}

TEST_F(Wrappers, AFailureWithoutErrorInfoIsThrownBare) {
    recorder.answerWith(E_NOTIMPL);
    ::SetErrorInfo(0, nullptr);
    try {
        app.DeleteWra();
        ADD_FAILURE();
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_NOTIMPL);
        EXPECT_EQ(error.ErrorInfo(), nullptr);
    }
}

// --- The object of the library -------------------------------------------------------------------------------------

TEST_F(Wrappers, TheLibrarysObjectIsNotTheProgramsApplication) {
    EXPECT_EQ(app.m_hInstance, ::GetModuleHandleA("QuorControls.dll"));
    EXPECT_EQ(AfxGetApp(), nullptr);
    CWinApp program("program");
    EXPECT_EQ(AfxGetApp(), &program);
    EXPECT_EQ(program.m_hInstance, ::GetModuleHandleA(nullptr));
    EXPECT_TRUE(app.InitInstance());
}

// A host may have an object of its own: the servers are the process's.
TEST_F(Wrappers, AnotherObjectReachesTheSameServers) {
    CQuorCOMWrapApp other;
    EXPECT_EQ(other.GetPortfTotReqWra(), 1);
}

TEST_F(Wrappers, Black76IsReachedThroughTheObject) {
    app.CalcBlack76ModelPutData(20, 0.09, 4.0 / 12, 0.25, 20, o[0], o[1], o[2], o[3], o[4], o[5]);
    EXPECT_NEAR(o[0], 1.1166, 5e-5);
    double c[6] = {};
    app.CalcBlack76ModelCallData(20, 0.09, 4.0 / 12, 0.25, 20, c[0], c[1], c[2], c[3], c[4], c[5]);
    EXPECT_NEAR(c[1] - o[1], std::exp(-0.09 / 3), 1e-12);  // delta
    EXPECT_NEAR(c[2], o[2], 1e-15);                        // gamma
    EXPECT_NEAR(c[3], o[3], 1e-12);                        // theta, at the money
    EXPECT_NEAR(c[4], o[4], 1e-15);                        // vega
    EXPECT_NEAR(c[5], -4.0 / 12 * c[0] / 100, 1e-15);      // rho
    EXPECT_EQ(app.NormalDistribution(0), 0.5);
}

// --- Processes -----------------------------------------------------------------------------------------------------

struct Activation : testing::Test {
    ~Activation() override {
        // As Recorder leaves it, for whatever test comes next.
        EXPECT_EQ(callEntry(load("RecordingServer.dll"), "DllRegisterServer"), S_OK);
    }
};

TEST_F(Activation, AServerThatIsNotRegisteredGivesFalse) {
    unregisterAll();
    EXPECT_EQ(runChild("create"), 0u);
}

TEST_F(Activation, AServerWhoseFileIsMissingGivesFalse) {
    const char path[] = "C:\\no such folder\\server.dll";
    for (const char* id : {"{0C332960-AC64-11D7-B457-00D0B7BD012C}", "{5B17F3FC-FBCD-4208-AF23-AA13B4717257}"}) {
        const std::string key = std::string("Software\\Classes\\CLSID\\") + id + "\\InprocServer32";
        ASSERT_EQ(::RegSetKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, path, sizeof(path)), 0);
    }
    EXPECT_EQ(runChild("create"), 0u);
}

TEST_F(Activation, RegisteredServersGiveTrue) {
    ASSERT_EQ(callEntry(load("RecordingServer.dll"), "DllRegisterServer"), S_OK);
    EXPECT_EQ(runChild("create"), test::kOptionCreated | test::kMarginCreated);
}

TEST_F(Activation, AWrapperWithoutItsServerFaults) { EXPECT_EQ(runChild("fault"), EXCEPTION_ACCESS_VIOLATION); }

TEST_F(Activation, EachServerObjectEndsComAtTheEndOfTheProcess) {
    ASSERT_EQ(callEntry(load("RecordingServer.dll"), "DllRegisterServer"), S_OK);
    char folder[MAX_PATH] = "";
    ::GetTempPathA(MAX_PATH, folder);
    const std::string path = std::string(folder) + "calculators_leave.txt";
    EXPECT_EQ(runChild("leave", path), test::kOptionCreated | test::kMarginCreated);
    std::ifstream file(path);
    std::string seen;
    file >> seen;
    EXPECT_EQ(seen, "uu");
    file.close();
    ::DeleteFileA(path.c_str());
}

// --- Registration of the real servers ------------------------------------------------------------------------------

struct RealServer {
    const char* dll;
    const wchar_t* program;
    const wchar_t* classId;
    const wchar_t* library;  // type library
};

const RealServer kRealServers[] = {
    {"QuorOptionServer.dll", L"Quor.OptionCalculator", L"{0C332960-AC64-11D7-B457-00D0B7BD012C}",
     L"{3E5B1B0A-52C4-4E7B-8E0B-6F3C2D9A7E10}"},
    {"QuorMarginServer.dll", L"Quor.MarginCalculator", L"{5B17F3FC-FBCD-4208-AF23-AA13B4717257}",
     L"{8D0F6A34-9C1E-4B57-A2D3-1B7E5C4F6011}"},
};

bool keyExists(const std::wstring& key) {
    HKEY opened = nullptr;
    const std::wstring path = L"Software\\Classes\\" + key;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    ::RegCloseKey(opened);
    return true;
}

TEST_F(Activation, TheRealServersRegisterAndRemoveThemselves) {
    unregisterAll();
    for (const RealServer& server : kRealServers) {
        const std::wstring classKey = std::wstring(L"CLSID\\") + server.classId;
        const std::wstring libraryKey = std::wstring(L"TypeLib\\") + server.library;
        const HMODULE dll = load(server.dll);
        for (int twice = 0; twice < 2; ++twice) EXPECT_EQ(callEntry(dll, "DllRegisterServer"), S_OK);
        EXPECT_TRUE(keyExists(classKey));
        EXPECT_TRUE(keyExists(libraryKey));
        CLSID found = {};
        EXPECT_EQ(::CLSIDFromProgID(server.program, &found), S_OK);
        EXPECT_EQ(textOf(found), static_cast<const char*>(_bstr_t(server.classId)));
    }
    EXPECT_EQ(runChild("create"), test::kOptionCreated | test::kMarginCreated);
    for (const RealServer& server : kRealServers) {
        const HMODULE dll = load(server.dll);
        for (int twice = 0; twice < 2; ++twice) EXPECT_EQ(callEntry(dll, "DllUnregisterServer"), S_OK);
        EXPECT_FALSE(keyExists(std::wstring(L"CLSID\\") + server.classId));
        EXPECT_FALSE(keyExists(std::wstring(L"TypeLib\\") + server.library));
        EXPECT_FALSE(keyExists(server.program));
    }
    EXPECT_EQ(runChild("create"), 0u);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[1]) == "--child") return test::childMain(argv[2], argc > 3 ? argv[3] : "");
    test::endOnCrash();
    test::useOwnDesktop();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
