#include <gtest/gtest.h>

#include <iterator>

#include "platform/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    char offscreen[] = "-platform", plugin[] = "offscreen";
    char* arguments[] = {argv[0], offscreen, plugin, nullptr};
    int count = static_cast<int>(std::size(arguments)) - 1;
    const platform::Application application(count, arguments);
    return RUN_ALL_TESTS();
}
