// Loading of translation catalogues.
#pragma once

class QString;
class QTranslator;

namespace pba {

// Loads exactly the named file, nothing that is called alike. False when it is missing, not a regular file or
// not a catalogue.
bool LoadCatalogue(QTranslator &translator, const char16_t *path);

} // namespace pba
