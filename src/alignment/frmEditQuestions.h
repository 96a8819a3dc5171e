#pragma once

#include "alignment/question_edit.h"
#include "frame/control_table.h"

namespace orvane {

// The editor of question files: an ordinary window that forgets all that was not saved when it is closed.
class frmEditQuestions : public TableForm {
 public:
    frmEditQuestions();

    void Form_Load() override;
    void CloseFromOutside() override;

 private:
    void ShowQuestion(std::int32_t Number);
    void Store(TextField& field, const platform::TextBox& box) const;
    void txtQuestion_Change();
    void txtAnsver_Change(int Index);
    void cmbAling_Validate(int Index);
    void cmndFirst_Click();
    void cmndPrev_Click();
    void cmndNext_Click();
    void cmndLast_Click();
    void cmndAdd_Click();
    void cmndDel_Click();
    void cmndNew_Click();
    void cmndOpen_Click();
    void cmndSave_Click();

    QuestionRecord& Current() { return edit_.List[edit_.CurrentQuestion]; }

    QuestionEdit edit_;
    bool showing_ = false;  // the boxes are being filled from the list
    platform::TextBox& txtQuestion = The<platform::TextBox>("txtQuestion");
    platform::TextBox& txtFile = The<platform::TextBox>("txtFile");
    platform::Label& lblNumber = The<platform::Label>("lblNumber");
};

}  // namespace orvane
