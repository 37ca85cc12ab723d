#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;
class QPushButton;

// One choice among a few labels, shown side by side; the labels are the values.
class SegmentedControl : public QWidget
{
    Q_OBJECT
public:
    SegmentedControl(const QStringList& labels, const QString& accessibleName, QWidget* parent = nullptr);

    // Marks a value without reporting it.
    void setCurrent(const QString& label);
    QString current() const;
    QPushButton* button(const QString& label) const;

Q_SIGNALS:
    void chosen(const QString& label);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* m_group;
    QStringList m_labels;
};
