#include <gtest/gtest.h>

#include "platform/application.h"
#include "support/robot.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();  // needs no toolkit, which may have a word to say
    std::vector<char*> arguments = robot::Arguments(argv[0]);
    int count = static_cast<int>(arguments.size());
    const platform::Application application(count, arguments.data());
    const int result = RUN_ALL_TESTS();
    robot::Live([] { return false; });  // what has been unloaded goes while the toolkit is there
    return result;
}
