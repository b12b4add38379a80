#include "host/picture_view.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSmallestZoom = 0.01;
constexpr double kLargestZoom = 32;
constexpr double kZoomStep = 1.4142135623730951; // two steps double
constexpr int kCheckerSquare = 8;

QBrush Checkerboard() {
    QImage tile(2 * kCheckerSquare, 2 * kCheckerSquare, QImage::Format_RGB32);
    tile.fill(QColor(204, 204, 204));
    QPainter painter(&tile);
    const QColor light(255, 255, 255);
    painter.fillRect(0, 0, kCheckerSquare, kCheckerSquare, light);
    painter.fillRect(kCheckerSquare, kCheckerSquare, kCheckerSquare, kCheckerSquare, light);
    painter.end();
    return QBrush(tile);
}

} // namespace

class PictureCanvas : public QWidget {
public:
    void Show(const QImage& image, double zoom) {
        image_ = image;
        zoom_ = zoom;
        reduced_ = QImage();
        const QSizeF size = QSizeF(image_.size()) * zoom_;
        resize(image_.isNull() ? QSize() : size.toSize().expandedTo(QSize(1, 1)));
        update();
    }

    const QImage& Image() const { return image_; }
    double Zoom() const { return zoom_; }

protected:
    void paintEvent(QPaintEvent* event) override {
        if (image_.isNull()) {
            return;
        }
        QPainter painter(this);
        if (image_.hasAlphaChannel()) {
            painter.fillRect(event->rect(), Checkerboard());
        }
        if (zoom_ < 1) {
            // Reduced once, not at every paint: it takes its time on a large picture.
            if (reduced_.isNull()) {
                reduced_ = image_.scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            }
            painter.drawImage(0, 0, reduced_);
        } else {
            painter.drawImage(QRect(QPoint(), size()), image_);
        }
    }

private:
    QImage image_;
    QImage reduced_;
    double zoom_ = 1;
};

PictureView::PictureView(QWidget* parent) : QScrollArea(parent), canvas_(new PictureCanvas) {
    setWidget(canvas_);
    setAlignment(Qt::AlignCenter);
    setBackgroundRole(QPalette::Dark);
    setFrameShape(QFrame::NoFrame);
}

void PictureView::SetImage(const QImage& image) {
    canvas_->Show(image, canvas_->Zoom());
    ChangeZoom(fits_ ? FittingZoom() : canvas_->Zoom());
}

void PictureView::ZoomToFit() {
    fits_ = true;
    ChangeZoom(FittingZoom());
}

void PictureView::SetZoom(double zoom) {
    fits_ = false;
    ChangeZoom(std::clamp(zoom, kSmallestZoom, kLargestZoom));
}

void PictureView::ZoomIn() {
    SetZoom(Zoom() * kZoomStep);
}

void PictureView::ZoomOut() {
    SetZoom(Zoom() / kZoomStep);
}

double PictureView::Zoom() const {
    return canvas_->Zoom();
}

void PictureView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    if (fits_) {
        ChangeZoom(FittingZoom());
    }
}

void PictureView::ChangeZoom(double zoom) {
    if (zoom != canvas_->Zoom()) {
        canvas_->Show(canvas_->Image(), zoom);
    }
    if (onZoomChanged) {
        onZoomChanged();
    }
}

double PictureView::FittingZoom() const {
    const QSize picture = canvas_->Image().size();
    if (picture.isEmpty()) {
        return 1;
    }
    const QSize room = maximumViewportSize();
    return std::min({1.0, static_cast<double>(room.width()) / picture.width(),
                     static_cast<double>(room.height()) / picture.height()});
}
