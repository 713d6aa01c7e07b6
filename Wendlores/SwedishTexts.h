#pragma once

#include <QTranslator>

namespace wendlore {

/// The toolkit's own texts in Swedish, as far as the program shows them: standard buttons, the menu of a text
/// field, the file dialog that is shown where the desktop has none.
class SwedishTexts final : public QTranslator
{
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int count) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace wendlore
