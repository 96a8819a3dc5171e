#include <gtest/gtest.h>

#include <iterator>

#include "platform/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // The last is how a desktop asks for a layout from right to left, which these windows do not have.
    char offscreen[] = "-platform", plugin[] = "offscreen", reverse[] = "-reverse";
    char* arguments[] = {argv[0], offscreen, plugin, reverse, nullptr};
    int count = static_cast<int>(std::size(arguments)) - 1;
    const platform::Application application(count, arguments);
    return RUN_ALL_TESTS();
}
