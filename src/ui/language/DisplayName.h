#pragma once

class ClipCategory;
class PasteTemplate;
class QString;

/// What views call a record that has a name.
///
/// The program's own categories and templates are stored by their English names, whatever the language, and
/// rules go by these. They are shown in the user's language as long as they have the name that they were made
/// with. A name that the user has given is shown as it stands, unless it is just that English name, which
/// nothing tells from one that was never changed: of a German user's "Bild", renamed to "Image", the stored
/// name is "Image" and the shown one "Bild" again.
QString displayName(const ClipCategory &category);
QString displayName(const PasteTemplate &pasteTemplate);

/// What to store when the user has edited the name that was shown: the stored name as long as the shown one
/// has not been changed.
QString storedName(const ClipCategory &category, const QString &edited);
