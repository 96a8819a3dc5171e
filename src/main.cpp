#include "platform/application.h"
#include "tools.h"

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    orvane::frmMain::SetTools(orvane::kTools);
    orvane::Open<orvane::frmMain>();
    application.Run();
}
