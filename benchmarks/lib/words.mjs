/** What the generated notes talk about: sentence parts in Swedish and English that fit together in any order. */

export const swedish = {
  subjects: [
    'Mötet', 'Projektgruppen', 'Budgeten för hösten', 'Min mormor', 'Anteckningen', 'Den nya planen', 'Föreningen',
    'Trädgården', 'Resan till Östersund', 'Läslistan', 'Vår leverantör', 'Det gamla köket', 'Körens övning', 'Rapporten',
  ],
  verbs: [
    'behöver gås igenom', 'blev klar', 'flyttades', 'kostade mer än väntat', 'ska skickas ut', 'väntar på svar',
    'påminner om förra året', 'började bra', 'tog längre tid än vi trodde', 'fick många frågor', 'går att förenkla',
  ],
  places: [
    'före nästa torsdag', 'efter lunch', 'i Göteborg', 'på kontoret i Malmö', 'under sommaren', 'vid sjön', 'på tåget hem',
    'tillsammans med Åsa och Jörgen', 'i den blå pärmen', 'så snart siffrorna är räknade', 'utan att någon märkte det',
  ],
  additions: [
    'men det finns tid kvar', 'och alla var överens', 'fast ingen hade skrivit ner det', 'så vi frågar igen nästa vecka',
    'vilket är skönt att veta', 'och kvittot ligger kvar', 'därför att beställningen dröjde', 'om vädret håller',
  ],
  headings: [
    'Beslut', 'Att göra', 'Bakgrund', 'Nästa steg', 'Öppna frågor', 'Ingredienser', 'Dag för dag', 'Siffror', 'Källor', 'Tankar',
  ],
};

export const english = {
  subjects: [
    'The meeting', 'Our draft', 'The reading list', 'A second backup', 'The old kitchen', 'The quarterly report', 'My notebook',
    'The supplier', 'The train journey', 'The choir', 'That recipe', 'The release', 'The whole family', 'The translation',
  ],
  verbs: [
    'needs another look', 'was finished early', 'moved to a new place', 'cost more than expected', 'goes out on Monday',
    'waits for an answer', 'reads better now', 'took longer than planned', 'raised good questions', 'can be made simpler',
  ],
  places: [
    'before Thursday', 'after lunch', 'in the blue folder', 'at the office', 'during the summer', 'by the lake',
    'on the way home', 'together with Anna and George', 'once the numbers are in', 'without anyone noticing',
  ],
  additions: [
    'but there is time left', 'and everyone agreed', 'although nobody wrote it down', 'so we ask again next week',
    'which is good to know', 'and the receipt is still here', 'because the order was late', 'if the weather holds',
  ],
  headings: [
    'Decisions', 'To do', 'Background', 'Next steps', 'Open questions', 'Ingredients', 'Day by day', 'Figures', 'Sources', 'Thoughts',
  ],
};
