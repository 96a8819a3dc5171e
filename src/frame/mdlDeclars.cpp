#include "frame/mdlDeclars.h"

#include "platform/form.h"
#include "platform/random.h"
#include "platform/sound.h"

namespace orvane {

Truth SoundEnabled = kFalse;
std::int32_t DragX = 0;
std::int32_t DragY = 0;

std::int32_t RandomRange(std::int32_t Low, std::int32_t High) {
    const auto span = static_cast<double>(std::int64_t{High} - Low + 1);
    return FloorToLong((static_cast<double>(platform::NextRandom()) * span) + Low);
}

std::string FormatBonus(std::int32_t Value) {
    if (Value == 0) return {};
    return Value > 0 ? "+" + NumberText(Value) : NumberText(Value);
}

void PlayWave(std::string_view FileName) {
    if (SoundEnabled == kTrue) platform::PlaySoundFile(FileName);
}

void MakeTopMost(platform::Form& Form) { Form.StayOnTop(); }

void SetNumberOnly(platform::TextBox& Box) { Box.SetDigitsOnly(); }

}  // namespace orvane
