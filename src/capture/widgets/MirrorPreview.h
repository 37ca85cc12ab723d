#pragma once

#include <QImage>
#include <QWidget>

// The mirror's picture: black, with the camera's picture flipped left to right and scaled to fill
// (cropped, not stretched), as a mirror shows a face.
class MirrorPreview : public QWidget
{
    Q_OBJECT
public:
    explicit MirrorPreview(QWidget* parent = nullptr);
    void setFrame(const QImage& frame);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_frame;
};
