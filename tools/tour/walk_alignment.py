"""The walk through the alignment meter and the question editor."""

from desktop import Failure, enter, expect, press

EDITED = "Who goes there?"


def answers(window):
    found = [control for control in window.controls() if control.role == "push button" and ".)" in control.name[:4]]
    return sorted(found, key=lambda control: control.place[1])


def result(window):
    return next(control.name for control in window.controls() if control.name.startswith("Result :"))


def frmAling(walk, window):
    question = window.box("Question and ansvers")
    expect("the first question", lambda: question.text.split("\n")[0], "1 of 24")
    expect("the result before the first answer", lambda: result(window), "Result :")
    walk.photograph("frmAling-fresh", window)
    name = "frmAling"
    for number in range(1, 25):
        expect("the question", lambda: question.text.split("\n")[0], f"{number} of 24")
        answer = answers(window)[number * 3 % 4]
        walk.tell(name, " ".join(question.text.split("\n")[1:]) + "\n" + answer.name)
        name = ""
        if number < 24:
            answer.click()
            expect("the next question", lambda: question.text.split("\n")[0], f"{number + 1} of 24")
        else:
            answer.click()
        if number == 12:
            walk.photograph("frmAling-half", window)
    final = result(window)
    if final.removeprefix("Result : ") not in ("Lawfull Good", "Good", "Chaotic Good", "Lawfull", "True Neutral",
                                                "Chaotic", "Lawfull Evil", "Evil", "Chaotic Evil"):
        raise Failure(f"no alignment: {final!r}")
    answers(window)[0].click()
    expect("the result after the last question", lambda: result(window), final)
    walk.tell("", final)
    walk.photograph("frmAling", window)

    window.button("Editor").click()
    editor = walk.place(walk.program.window("Question Editor (ini version 1.0a )", "Save"))
    editor.button("Open").click()
    expect("the number of questions", lambda: editor.has_label("1/24"), True)
    walk.photograph("frmEditQuestions", editor)
    editor.activate()
    press("alt+q")
    enter(EDITED)
    editor.button("Save").click()
    walk.tell("frmEditQuestions", f"the first question is now {EDITED!r}")


def ask_edited_question(walk, window):
    """In a program that was started anew."""
    question = window.box("Question and ansvers")
    expect("the edited question", lambda: question.text, f"1 of 24\n{EDITED}")
    walk.tell("frmAling", f"after a new start it asks {EDITED!r}")
