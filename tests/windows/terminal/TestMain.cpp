#include <gtest/gtest.h>

#include <cstring>

#include "SettingsWriter.h"

int main(int count, char** arguments) {
    if (count == 4 && !std::strcmp(arguments[1], terminal::settingsWriterOption))
        return terminal::writeSettingsForEver(arguments[2], arguments[3]);
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
