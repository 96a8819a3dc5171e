#include "alignment/frmEditQuestions.h"

#include "frame/mdlDeclars.h"

namespace orvane {
namespace {

// In tab order.
constexpr ControlRow kControls[] = {
    {"Label3", Kind::Caption, "&Question Text :", {8, 8, 449, 17}},
    {"txtQuestion", Kind::SheetBox, "", {8, 24, 449, 89}},
    {{"Label1", 0}, Kind::CentredCaption, "&1 :", {8, 120, 17, 21}},
    {{"txtAnsver", 1}, Kind::TextBox, "", {24, 120, 241, 21}, kPlain, {}, "Answer 1"},
    {{"cmbAling", 1}, Kind::List, "", {267, 120, 190, 23}, kFixed, {}, "Code of answer 1"},
    {{"Label1", 1}, Kind::CentredCaption, "&2 :", {8, 144, 17, 21}},
    {{"txtAnsver", 2}, Kind::TextBox, "", {24, 144, 241, 21}, kPlain, {}, "Answer 2"},
    {{"cmbAling", 2}, Kind::List, "", {267, 144, 190, 23}, kFixed, {}, "Code of answer 2"},
    {{"Label1", 2}, Kind::CentredCaption, "&3 :", {8, 168, 17, 21}},
    {{"txtAnsver", 3}, Kind::TextBox, "", {24, 168, 241, 21}, kPlain, {}, "Answer 3"},
    {{"cmbAling", 3}, Kind::List, "", {267, 168, 190, 23}, kFixed, {}, "Code of answer 3"},
    {{"Label1", 3}, Kind::CentredCaption, "&4 :", {8, 192, 17, 21}},
    {{"txtAnsver", 4}, Kind::TextBox, "", {24, 192, 241, 21}, kPlain, {}, "Answer 4"},
    {{"cmbAling", 4}, Kind::List, "", {267, 192, 190, 23}, kFixed, {}, "Code of answer 4"},
    {"cmndFirst", Kind::PushButton, "|<<", {8, 216, 41, 19}},
    {"cmndPrev", Kind::PushButton, "<<", {48, 216, 41, 19}},
    {"lblNumber", Kind::CentredCaption, "", {88, 216, 129, 19}},
    {"cmndDel", Kind::PushButton, "Del >|", {224, 216, 41, 19}},
    {"cmndAdd", Kind::PushButton, "Add >|", {264, 216, 41, 19}},
    {"cmndNext", Kind::PushButton, ">>", {304, 216, 41, 19}},
    {"cmndLast", Kind::PushButton, ">>|", {344, 216, 41, 19}},
    {"txtFile", Kind::TextBox, kQuestionFile, {8, 234, 217, 19}, kPlain, {}, "File"},
    {"cmndOpen", Kind::PushButton, "&Open", {272, 234, 57, 19}},
    {"cmndSave", Kind::PushButton, "&Save", {328, 234, 57, 19}},
    {"cmndNew", Kind::PushButton, "&Clear", {224, 234, 49, 19}},
};

// Without a status line these are for assistive technology alone.
constexpr HintRow kHints[] = {
    {"cmndFirst", "First question"},
    {"cmndPrev", "Previous question"},
    {"cmndDel", "Takes the last question off"},
    {"cmndAdd", "Adds a question at the end"},
    {"cmndNext", "Next question"},
    {"cmndLast", "Last question"},
};

constexpr WindowTable kTable{.Name = "frmEditQuestions",
                             .Caption = "Question Editor (ini version 1.0a )",
                             .Width = 465,
                             .Height = 259,
                             .Controls = kControls,
                             .Hints = kHints,
                             .Centred = false,
                             .Icon = false};

}  // namespace

frmEditQuestions::frmEditQuestions() : TableForm(kTable, platform::FormFrame::Dialog) {
    txtQuestion.Change = [this] { txtQuestion_Change(); };
    for (int i = 1; i <= kAnswerCount; ++i) {
        The<platform::TextBox>({"txtAnsver", i}).Change = [this, i] { txtAnsver_Change(i); };
        The<platform::DropDownList>({"cmbAling", i}).Validate = [this, i] {
            cmbAling_Validate(i);
            return true;
        };
    }
    const auto on = [this](const char* button, void (frmEditQuestions::*handler)()) {
        The<platform::PushButton>(button).Click = [this, handler] { (this->*handler)(); };
    };
    on("cmndFirst", &frmEditQuestions::cmndFirst_Click);
    on("cmndPrev", &frmEditQuestions::cmndPrev_Click);
    on("cmndNext", &frmEditQuestions::cmndNext_Click);
    on("cmndLast", &frmEditQuestions::cmndLast_Click);
    on("cmndAdd", &frmEditQuestions::cmndAdd_Click);
    on("cmndDel", &frmEditQuestions::cmndDel_Click);
    on("cmndNew", &frmEditQuestions::cmndNew_Click);
    on("cmndOpen", &frmEditQuestions::cmndOpen_Click);
    on("cmndSave", &frmEditQuestions::cmndSave_Click);
}

void frmEditQuestions::Form_Load() {
    for (int i = 1; i <= kAnswerCount; ++i) {
        for (const AnswerCode& code : kAnswerCodes)
            The<platform::DropDownList>({"cmbAling", i}).AddItem(code.Entry);
    }
    cmndNew_Click();
}

void frmEditQuestions::CloseFromOutside() { platform::UnloadForm<frmEditQuestions>(); }

void frmEditQuestions::ShowQuestion(std::int32_t Number) {
    showing_ = true;
    const QuestionRecord& question = edit_.List[Number];
    for (int i = 1; i <= kAnswerCount; ++i) {
        const AnswerRecord& answer = question.Answers[i];
        The<platform::TextBox>({"txtAnsver", i}).SetText(TextOf(answer.Text));
        The<platform::DropDownList>({"cmbAling", i})
            .SetListIndex(static_cast<int>(AnswerCodePosition(TextOf(answer.Value))));
    }
    txtQuestion.SetText(TextOf(question.Text));
    showing_ = false;
    lblNumber.SetCaption(NumberText(Number) + "/" + NumberText(edit_.QuestionCount));
}

// What a box is made to show is stored as the list has it: a box might not hold every character that a file
// can, and what nobody edits stays as it was read.
void frmEditQuestions::Store(TextField& field, const platform::TextBox& box) const {
    field = showing_ ? TextOf(field) : box.Text();
}

void frmEditQuestions::txtQuestion_Change() { Store(Current().Text, txtQuestion); }

void frmEditQuestions::txtAnsver_Change(int Index) {
    Store(Current().Answers[Index].Text, The<platform::TextBox>({"txtAnsver", Index}));
}

void frmEditQuestions::cmbAling_Validate(int Index) {
    const int position = The<platform::DropDownList>({"cmbAling", Index}).ListIndex();
    Current().Answers[Index].Value = kAnswerCodes.at(static_cast<std::size_t>(position)).Code;
}

void frmEditQuestions::cmndFirst_Click() {
    GoToQuestion(edit_, 1);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndPrev_Click() {
    GoToQuestion(edit_, edit_.CurrentQuestion - 1);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndNext_Click() {
    GoToQuestion(edit_, edit_.CurrentQuestion + 1);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndLast_Click() {
    GoToQuestion(edit_, edit_.QuestionCount);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndAdd_Click() {
    AddQuestion(edit_);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndDel_Click() {
    DropLastQuestion(edit_);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndNew_Click() {
    ClearQuestions(edit_);
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndOpen_Click() {
    OpenQuestions(edit_, txtFile.Text());
    ShowQuestion(edit_.CurrentQuestion);
}

void frmEditQuestions::cmndSave_Click() { SaveQuestions(txtFile.Text(), edit_.List, edit_.QuestionCount); }

}  // namespace orvane
