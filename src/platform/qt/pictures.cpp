#include <QPainter>
#include <QPixmap>
#include <algorithm>

#include "platform/controls.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

class PictureWidget : public QWidget {
 public:
    PictureWidget(QWidget* parent, std::string_view picture) : QWidget(parent), name_(picture) {}

 protected:
    void paintEvent(QPaintEvent*) override {
        if (picture_.isNull() || density_ != devicePixelRatioF()) {
            density_ = devicePixelRatioF();
            picture_ = LoadPicture(name_, density_);
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), picture_);
    }

 private:
    std::string name_;
    qreal density_ = 0;
    QPixmap picture_;
};

// An outline of some width, centred on the edge of a place.
class OutlineWidget : public QWidget {
 public:
    OutlineWidget(QWidget* parent, const Rect& place, Color color, int lineWidth)
        : QWidget(parent), color_(ToQColor(color)), lineWidth_(lineWidth) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        const int outside = Outside();
        setGeometry(QRect(place.Left, place.Top, place.Width, place.Height)
                        .adjusted(-outside, -outside, outside, outside));
    }

    int Outside() const { return lineWidth_ / 2; }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const int line = std::min({lineWidth_, width(), height()});
        painter.fillRect(0, 0, width(), line, color_);
        painter.fillRect(0, height() - line, width(), line, color_);
        painter.fillRect(0, 0, line, height(), color_);
        painter.fillRect(width() - line, 0, line, height(), color_);
    }

 private:
    QColor color_;
    int lineWidth_;
};

}  // namespace

Picture::Picture(Form& form, std::string_view name, const Rect& place, std::string_view picture)
    : Control(std::make_unique<Native>(form, name, place, new PictureWidget(form.Toolkit().Widget, picture),
                                       Native::Pointer::Plain)) {}

struct Shape::Native {
    OutlineWidget* Widget;
};

Shape::Shape(Form& form, std::string_view name, const Rect& place, Color color, int lineWidth)
    : native_(std::make_unique<Native>(new OutlineWidget(form.Toolkit().Widget, place, color, lineWidth))) {
    native_->Widget->setObjectName(ToQString(name));
}

Shape::~Shape() = default;

void Shape::SetHeight(int height) {
    native_->Widget->resize(native_->Widget->width(), height + 2 * native_->Widget->Outside());
}

int Shape::Height() const { return native_->Widget->height() - 2 * native_->Widget->Outside(); }

}  // namespace platform
