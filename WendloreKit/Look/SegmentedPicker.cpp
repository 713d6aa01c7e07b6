#include "Look/SegmentedPicker.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>

#include <algorithm>

namespace wendlore {

namespace {

constexpr int padding = 16;
constexpr int edge = 2; // between the ground and the chosen segment

} // namespace

class SegmentedPicker::Segment final : public QRadioButton
{
public:
    using QRadioButton::QRadioButton;

    [[nodiscard]] QSize sizeHint() const override
    {
        return {fontMetrics().horizontalAdvance(text()) + 2 * padding, metrics::buttonHeight};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    void paintEvent(QPaintEvent*) override
    {
        const Colors& colors = Colors::of(palette());
        QPainter painter(this);
        const QRectF ground = QRectF(rect()).adjusted(edge, edge, -edge, -edge);
        if (isChecked()) {
            fillRounded(painter, ground, colors.paper, metrics::radius - edge);
            strokeRounded(painter, ground, colors.strongLine, 1, metrics::radius - edge);
        }
        painter.setPen(isChecked() || underMouse() ? colors.text : colors.muted);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
        if (hasFocus())
            drawFocusRing(painter, rect(), colors.accent);
    }
};

SegmentedPicker::SegmentedPicker(const QString& name, QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
{
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(0);
}

void SegmentedPicker::add(const QString& text)
{
    auto* segment = new Segment(text, this);
    segment->setAttribute(Qt::WA_Hover);
    const int index = static_cast<int>(m_segments.size());
    m_segments.push_back(segment);
    m_row->addWidget(segment);
    connect(segment, &QRadioButton::toggled, this, [this, segment, index](bool isChosen) {
        // Tab goes to the chosen one; a click leaves the keyboard to what is chosen.
        segment->setFocusPolicy(isChosen ? Qt::TabFocus : Qt::NoFocus);
        if (isChosen)
            Q_EMIT chosenChanged(index);
    });
    segment->setFocusPolicy(Qt::NoFocus);
    segment->setChecked(index == 0);
}

int SegmentedPicker::chosen() const
{
    return static_cast<int>(std::ranges::find_if(m_segments, &QRadioButton::isChecked) - m_segments.begin());
}

void SegmentedPicker::choose(int index)
{
    m_segments.at(static_cast<std::size_t>(index))->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    fillRounded(painter, rect(), Colors::of(palette()).hover, metrics::radius);
}

} // namespace wendlore
