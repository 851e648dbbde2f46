// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QLayout>

namespace orvane {

/// Sets widgets side by side like words in a paragraph, on as many lines as they need. One wider
/// than a line is cut to it.
class FlowLayout : public QLayout {
public:
    FlowLayout(QWidget* parent, int gap);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    void insertWidget(int index, QWidget* widget);
    [[nodiscard]] int count() const override { return int(m_items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    void setGeometry(const QRect& rect) override;

private:
    enum class Pass { Measure, Place };
    int arrange(const QRect& rect, Pass pass) const;

    QList<QLayoutItem*> m_items;
    int m_gap;
};

} // namespace orvane
