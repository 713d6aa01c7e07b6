#pragma once

#include "Previews/FindBar.h"

class QWebEngineView;

namespace wendlore {

/// Searches the page of a web view. It stands over the upper right corner of the view, which it belongs to.
class WebFindBar final : public FindBar
{
    Q_OBJECT

public:
    explicit WebFindBar(QWebEngineView& view);

    void step(int way) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void search(const QString& words) override;
    void standInTheCorner();

    QWebEngineView& m_view;
    QString m_words;
};

} // namespace wendlore
