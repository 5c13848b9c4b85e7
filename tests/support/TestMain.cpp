#include "support/WindowFixture.h"

int main(int argc, char** argv) {
    test::endOnCrash();
    test::useOwnDesktop();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
