#include "Wendlores/SwedishTexts.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QHash<QByteArray, QString> texts{
    // standard buttons
    {"OK", u"OK"_s},
    {"&OK", u"&OK"_s},
    {"Cancel", u"Avbryt"_s},
    {"&Cancel", u"&Avbryt"_s},
    {"Close", u"Stäng"_s},
    {"&Close", u"&Stäng"_s},
    {"Save", u"Spara"_s},
    {"&Save", u"&Spara"_s},
    {"&Open", u"&Öppna"_s},
    {"Open", u"Öppna"_s},
    {"&Yes", u"&Ja"_s},
    {"&No", u"&Nej"_s},
    // text fields
    {"&Undo", u"&Ångra"_s},
    {"&Redo", u"&Gör om"_s},
    {"Cu&t", u"Klipp &ut"_s},
    {"&Copy", u"&Kopiera"_s},
    {"&Paste", u"Klistra &in"_s},
    {"Delete", u"Ta bort"_s},
    {"Select All", u"Markera allt"_s},
    // file dialog
    {"Look in:", u"Sök i:"_s},
    {"Directory:", u"Mapp:"_s},
    {"File &name:", u"Fil&namn:"_s},
    {"Files of type:", u"Filtyp:"_s},
    {"&Choose", u"&Välj"_s},
    {"All Files (*)", u"Alla filer (*)"_s},
    {"Back", u"Bakåt"_s},
    {"Forward", u"Framåt"_s},
    {"Go back", u"Gå bakåt"_s},
    {"Go forward", u"Gå framåt"_s},
    {"Parent Directory", u"Mappen ovanför"_s},
    {"Go to the parent directory", u"Gå till mappen ovanför"_s},
    {"Create New Folder", u"Skapa ny mapp"_s},
    {"Create a New Folder", u"Skapa en ny mapp"_s},
    {"List View", u"Lista"_s},
    {"Change to list view mode", u"Visa som lista"_s},
    {"Detail View", u"Detaljer"_s},
    {"Change to detail view mode", u"Visa detaljer"_s},
    {"Sidebar", u"Sidofält"_s},
    {"List of places and bookmarks", u"Platser och bokmärken"_s},
    {"Directories", u"Mappar"_s},
    {"Files", u"Filer"_s},
    {"Name", u"Namn"_s},
    {"Size", u"Storlek"_s},
    {"Type", u"Typ"_s},
    {"Date Modified", u"Ändrad"_s},
    {"Computer", u"Datorn"_s},
    {"Drive", u"Enhet"_s},
    {"File", u"Fil"_s},
    {"File Folder", u"Mapp"_s},
    {"Folder", u"Mapp"_s},
    {"Recent Places", u"Senaste platser"_s},
    {"Show ", u"Visa "_s},
    {"Show &hidden files", u"Visa &dolda filer"_s},
    {"&Rename", u"&Byt namn"_s},
    {"&Delete", u"&Ta bort"_s},
    {"&New Folder", u"&Ny mapp"_s},
    {"New Folder", u"Ny mapp"_s},
    {"Remove", u"Ta bort"_s},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     u"%1\nFilen finns inte. Kontrollera att namnet är rätt."_s},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     u"%1\nMappen finns inte. Kontrollera att namnet är rätt."_s},
    {"Are you sure you want to delete '%1'?", u"Vill du ta bort %1?"_s},
    {"'%1' is write protected.\nDo you want to delete it anyway?",
     u"%1 är skrivskyddad.\nVill du ta bort den ändå?"_s},
    {"Could not delete directory.", u"Mappen gick inte att ta bort."_s},
    // keys
    {"Shift", u"Skift"_s},
};

} // namespace

QString SwedishTexts::translate(const char*, const char* source, const char*, int) const
{
    return texts.value(source);
}

} // namespace wendlore
