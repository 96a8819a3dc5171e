#include "platform/form.h"

#include <QIcon>

#include "platform/qt/toolkit.h"

namespace platform {
namespace {

Qt::WindowFlags FlagsOf(FormFrame frame) {
    if (frame == FormFrame::None) return Qt::Window | Qt::FramelessWindowHint;
    return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowCloseButtonHint;
}

}  // namespace

Form::Form(std::string_view name, std::string_view caption, int width, int height, FormFrame frame)
    : native_(new Native{new FormWidget(*this, FlagsOf(frame))}) {
    native_->Widget->setObjectName(ToQString(name));
    native_->Widget->setWindowTitle(ToQString(caption));
    native_->Widget->setFixedWidth(width);
    native_->Widget->SetHeight(static_cast<float>(height) * kTwipsPerPixel);
}

Form::~Form() { native_->Widget->Orphan(); }

void Form::Show() { native_->Widget->ShowAgain(); }
void Form::Hide() { native_->Widget->hide(); }

void Form::StayOnTop() { native_->Widget->setWindowFlag(Qt::WindowStaysOnTopHint); }
void Form::Centre() { native_->Widget->Centre(); }

void Form::SetIcon(std::string_view picture) {
    QIcon icon(LoadPicture(picture, 1));
    icon.addPixmap(LoadPicture(picture, 2));
    native_->Widget->setWindowIcon(icon);
}

void Form::SetBackColor(Color color) {
    QPalette palette = native_->Widget->palette();
    palette.setColor(QPalette::Window, ToQColor(color));
    native_->Widget->setPalette(palette);
}

void Form::SetSpokenName(std::string_view name) { native_->Widget->setAccessibleName(ToQString(name)); }

float Form::Left() const { return native_->Widget->Left(); }
float Form::Top() const { return native_->Widget->Top(); }
void Form::SetLeft(float twips) { native_->Widget->MoveTo(twips, Top()); }
void Form::SetTop(float twips) { native_->Widget->MoveTo(Left(), twips); }
void Form::SetHeight(float twips) { native_->Widget->SetHeight(twips); }

}  // namespace platform
