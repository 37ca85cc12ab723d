#pragma once

#include <QImage>
#include <QWidget>

// The wing's content: cover, title and (on a tall enough notch) subtitle on black, the outer lower
// corner rounded.
class NotchWing : public QWidget
{
    Q_OBJECT
public:
    static constexpr int wingWidth = 230;

    NotchWing(const QImage& image, const QString& title, const QString& subtitle, double height,
              QWidget* parent = nullptr);
    const QString& title() const { return m_title; }
    bool showsSubtitle() const;
    bool showsCover() const { return !m_image.isNull(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
    QString m_title;
    QString m_subtitle;
};
