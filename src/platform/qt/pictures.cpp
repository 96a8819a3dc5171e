#include <QPainter>
#include <QPixmap>
#include <QPointF>
#include <algorithm>
#include <vector>

#include "platform/controls.h"
#include "platform/qt/toolkit.h"

namespace platform {
namespace {

class PictureWidget : public QWidget {
 public:
    PictureWidget(QWidget* parent, std::string_view picture) : QWidget(parent), name_(picture) {}

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), LoadPicture(name_, devicePixelRatioF()));
    }

 private:
    std::string name_;
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
        // An outline that reaches over the form's edge is closed on the edge.
        const int right = std::min(width(), parentWidget()->width() - x());
        const int outside = Outside();
        DrawOutline(painter, QRect(0, 0, right, height()).adjusted(outside, outside, -outside, -outside),
                    color_, outside);
    }

 private:
    QColor color_;
    int lineWidth_;
};

struct Stroke {
    bool Filled;
    QPointF From;
    QPointF To;
    QColor Ink;
    int Width;
    PenMode Mode;
};

// Keeps the strokes since the last Cls, so that they can be drawn anew when the window comes to a screen of
// another density.
class CanvasWidget : public QWidget {
 public:
    CanvasWidget(QWidget* parent, std::string_view picture) : QWidget(parent), name_(picture) {}

    void Draw(const Stroke& stroke) {
        strokes_.push_back(stroke);
        if (!canvas_.isNull()) Apply(stroke);
        update();
    }
    void Clear() {
        strokes_.clear();
        canvas_ = QImage();
        update();
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        if (canvas_.isNull() || canvas_.devicePixelRatio() != devicePixelRatioF()) Rebuild();
        QPainter(this).drawImage(rect(), canvas_);
    }

 private:
    void Rebuild() {
        const qreal density = devicePixelRatioF();
        canvas_ = LoadPicture(name_, density)
                      .toImage()
                      .scaled(size() * density, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_RGB32);
        canvas_.setDevicePixelRatio(density);
        for (const Stroke& stroke : strokes_) Apply(stroke);
    }

    void Apply(const Stroke& stroke) {
        if (stroke.Filled) return Fill(stroke);
        QPainter painter(&canvas_);
        painter.setRenderHint(QPainter::Antialiasing);
        if (stroke.Mode == PenMode::Xor) painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        painter.setPen(QPen(stroke.Ink, stroke.Width, Qt::SolidLine, Qt::RoundCap));
        // A coordinate names the middle of a pixel.
        const QPointF middle(0.5, 0.5);
        if (stroke.From == stroke.To) {
            painter.drawPoint(stroke.From + middle);
        } else {
            painter.drawLine(stroke.From + middle, stroke.To + middle);
        }
    }

    void Fill(const Stroke& stroke) {
        const QPoint first = stroke.From.toPoint();
        const QPoint last = stroke.To.toPoint();
        if (first.x() == last.x() || first.y() == last.y()) return;
        const QRect box(QPoint(std::min(first.x(), last.x()), std::min(first.y(), last.y())),
                        QPoint(std::max(first.x(), last.x()), std::max(first.y(), last.y())));
        const qreal density = canvas_.devicePixelRatio();
        const QRect pixels =
            QRect(QPoint(qRound(box.left() * density), qRound(box.top() * density)),
                  QPoint(qRound((box.right() + 1) * density) - 1, qRound((box.bottom() + 1) * density) - 1))
                .intersected(QRect(QPoint(0, 0), canvas_.size()));
        const QRgb ink = stroke.Ink.rgb() & RGB_MASK;
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(canvas_.scanLine(y));
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                row[x] = stroke.Mode == PenMode::Xor ? row[x] ^ ink : 0xff000000U | ink;
        }
    }

    std::string name_;
    std::vector<Stroke> strokes_;
    QImage canvas_;
};

}  // namespace

PictureBox::PictureBox(Form& form, std::string_view name, const Rect& place, std::string_view picture)
    : Control(std::make_unique<Native>(form, name, place, new CanvasWidget(form.Toolkit().Widget, picture),
                                       Native::Pointer::Plain)) {}

void PictureBox::SetPen(int width, PenMode mode) {
    width_ = width;
    mode_ = mode;
}

void PictureBox::Box(float x1, float y1, float x2, float y2, Color color) {
    static_cast<CanvasWidget*>(Toolkit().Widget)
        ->Draw({true, QPointF(x1, y1), QPointF(x2, y2), ToQColor(color), width_, mode_});
}

void PictureBox::Line(float x1, float y1, float x2, float y2, Color color) {
    static_cast<CanvasWidget*>(Toolkit().Widget)
        ->Draw({false, QPointF(x1, y1), QPointF(x2, y2), ToQColor(color), width_, mode_});
}

void PictureBox::Cls() { static_cast<CanvasWidget*>(Toolkit().Widget)->Clear(); }

Picture::Picture(Form& form, std::string_view name, const Rect& place, std::string_view picture)
    : Control(std::make_unique<Native>(form, name, place, new PictureWidget(form.Toolkit().Widget, picture),
                                       Native::Pointer::Plain)) {}

struct Shape::Native {
    OutlineWidget* Widget;
};

Shape::Shape(Form& form, std::string_view name, const Rect& place, Color color, int lineWidth)
    : native_(new Native{new OutlineWidget(form.Toolkit().Widget, place, color, lineWidth)}) {
    native_->Widget->setObjectName(ToQString(name));
}

Shape::~Shape() = default;

void Shape::SetHeight(int height) {
    native_->Widget->resize(native_->Widget->width(), height + (2 * native_->Widget->Outside()));
}

}  // namespace platform
