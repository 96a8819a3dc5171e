#pragma once

#include "alignment/frmEditQuestions.h"
#include "platform/profile_fixture.h"
#include "support/robot.h"
#include "support/seams.h"
#include "tools.h"

// A test at the program's windows, with folders and a listener of its own. No window outlives it.
class WindowTest : public FolderTest {
 protected:
    using Strings = std::vector<std::string>;

    WindowTest() {
        orvane::SoundEnabled = orvane::kTrue;
        orvane::frmMain::SetTools(orvane::kTools);
        platform::SetRandomSource({});
    }
    ~WindowTest() override {
        Each([]<class Form>() { platform::UnloadForm<Form>(); });
        orvane::SoundEnabled = orvane::kFalse;
    }

    template <class Action>
    static void Each(const Action& act) {
        using namespace orvane;
        const auto all = [&act]<class... Forms>() { (act.template operator()<Forms>(), ...); };
        all.template operator()<frmMain, frmDice, frmRange2Dice, frmStatsGenerator, frmStatsCounter,
                                frmWeapons, frmAling, frmEditQuestions>();
    }
    template <class Form>
    static void Show() {
        platform::TheForm<Form>().Show();
    }
    // Types into the box with the access key, over what it holds.
    static void Enter(std::string_view form, std::string_view accessKey, std::string_view text) {
        for (const std::string_view key :
             {accessKey, std::string_view("Ctrl+A"), std::string_view("Backspace")})
            robot::Key(form, key);
        robot::Type(form, text);
    }

    Listener listener;
};
