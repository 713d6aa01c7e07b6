#pragma once

class QMenu;
class QWebEngineContextMenuRequest;
class QWebEnginePage;
class QWebEngineProfile;

namespace wendlore {

/// Says where the dictionaries lie that came with the library. To be called before there is any profile: the
/// engine looks once, when it starts.
void offerDictionaries();

/// Checks what is written in pages of `profile` against Swedish and English at once: a word is wrong when
/// neither knows it.
void checkSpelling(QWebEngineProfile& profile);

/// Puts words to write in place of the wrong one that the menu was asked for at the top of `menu`; does
/// nothing when the word there is right.
void addSpellingSuggestions(QMenu& menu, QWebEnginePage& page, const QWebEngineContextMenuRequest* request);

} // namespace wendlore
