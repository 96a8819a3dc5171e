#include <gtest/gtest.h>

#include <iterator>

#include "platform/application.h"
#include "support/robot.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();  // needs no toolkit, which may have a word to say
    // The last is how a desktop asks for a layout from right to left, which these windows do not have.
    char offscreen[] = "-platform", plugin[] = "offscreen", reverse[] = "-reverse";
    char* arguments[] = {argv[0], offscreen, plugin, reverse, nullptr};
    int count = static_cast<int>(std::size(arguments)) - 1;
    const platform::Application application(count, arguments);
    const int result = RUN_ALL_TESTS();
    robot::Live([] { return false; });  // what has been unloaded goes while the toolkit is there
    return result;
}
