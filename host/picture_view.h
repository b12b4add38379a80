// Shows an image in a scrolling area, at a zoom or as large as fits.
#pragma once

#include <QImage>
#include <QScrollArea>

#include <functional>

class PictureCanvas;

class PictureView : public QScrollArea {
public:
    explicit PictureView(QWidget* parent = nullptr);

    void SetImage(const QImage& image);

    // As large as the window allows, and never larger than the picture is; follows the window.
    void ZoomToFit();
    void SetZoom(double zoom); // 1 is a screen pixel for each pixel
    void ZoomIn();
    void ZoomOut();
    double Zoom() const;

    std::function<void()> onZoomChanged;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ChangeZoom(double zoom);
    double FittingZoom() const;

    PictureCanvas* canvas_;
    bool fits_ = true;
};
