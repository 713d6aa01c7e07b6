#pragma once

#include <QWidget>

namespace wendlore {

/// One symbol in the colour of secondary things, for empty states and cards.
class SymbolView final : public QWidget
{
    Q_OBJECT

public:
    SymbolView(QString name, int size, QWidget* parent = nullptr);

    [[nodiscard]] const QString& name() const { return m_name; }
    void setName(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
};

} // namespace wendlore
