#pragma once

#include <QByteArrayView>
#include <QStringView>

#include <functional>

namespace wendlore {

/// Writes `text` as markup with its comments, strings, numbers, words of the language and names marked; the
/// language is that of files with `extension`, and a text of no known language stays plain. Takes time in
/// proportion to the text whatever it holds. `write` gets each line feed by itself, outside of every element.
void highlight(QStringView text, const QString& extension, const std::function<void(QByteArrayView)>& write);

} // namespace wendlore
