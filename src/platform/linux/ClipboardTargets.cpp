#include "platform/linux/ClipboardTargets.h"

#include <algorithm>
#include <array>

namespace clipboard
{
namespace
{

// An owner may offer any number of formats; each one kept costs it a conversion.
constexpr qsizetype MaximumExtras = 48;

// The X11 name before the MIME type: one widespread toolkit turns line feeds into CR LF for the MIME type,
// and leaves the text as it is for the other.
constexpr std::array TextTargets = {Utf8String, Utf8PlainText, PlainText, Latin1String};

/// Small ones first: they are what tells a copy of files or of a link from a text.
constexpr std::array OtherTargets = {
    UriList, GnomeCopiedFiles, MateCopiedFiles, KdeCutSelection, MozillaUrl, Tiff, Png};

/// MIME types that mean something to one receiver only, to the process that offers them only, or that do
/// something when asked for. Names that are no MIME types are never kept: those are the protocol's own (ICCCM
/// section 2.6.2 and 2.6.3) and private ones.
constexpr std::array PrivateTargets = {
    "application/vnd.portal.filetransfer",          // starts a transfer between two sandboxes
    "application/vnd.portal.files",                 // the same, by its older name
    "application/x-moz-file",                       // a pointer
    "application/x-moz-nativeimage",                // a pointer
    "application/x-moz-nativehtml",                 // another system's format
    "application/x-moz-file-promise",               // a drag's receiver asks for the file
    "application/x-moz-file-promise-url",           //
    "application/x-moz-file-promise-dir",           //
    "application/x-moz-file-promise-dest-filename", //
    "application/x-java-jvm-local-objectref",       // a pointer
    "application/x-qt-image",                       // made from image/png by the receiver's toolkit
    "application/x-rootwindow-drop",                // a drag's receiver is the desktop
    "text/x-xdnd-username",                         // a drag's handshake
};

bool isMimeType(const QByteArray &target)
{
    return target.contains('/');
}

bool isPrivate(const QByteArray &canonical)
{
    return canonical.contains("xdnd") || canonical.contains("directsave") ||
        std::find(PrivateTargets.begin(), PrivateTargets.end(), canonical) != PrivateTargets.end();
}

bool isOther(const QByteArray &canonical)
{
    return std::find(OtherTargets.begin(), OtherTargets.end(), canonical) != OtherTargets.end();
}

/// Whether to keep the target for the sake of other programs. Texts in further encodings follow from the one
/// read.
bool isExtra(const QByteArray &target)
{
    const QByteArray canonical = canonicalTarget(target);
    return isMimeType(canonical) && !isOther(canonical) && !isPrivate(canonical) &&
        !isRasterImage(canonical) && canonical != PlainText && !canonical.startsWith("text/plain;");
}

std::optional<QByteArray> offeredName(const QByteArrayList &offered, const QByteArray &canonical)
{
    for (const QByteArray &target : offered) {
        if (canonicalTarget(target) == canonical)
            return target;
    }
    return std::nullopt;
}

QByteArrayList present(const QByteArrayList &offered, const auto &wanted)
{
    QByteArrayList names;
    for (const char *const target : wanted) {
        if (const auto name = offeredName(offered, target))
            names.append(*name);
    }
    return names;
}

QByteArrayList extrasOf(const QByteArrayList &offered)
{
    QByteArrayList extras;
    for (const QByteArray &target : offered) {
        if (isExtra(target) && !extras.contains(target) && extras.size() < MaximumExtras)
            extras.append(target);
    }
    return extras;
}

} // namespace

FetchPlan fetchPlan(const QByteArrayList &offered)
{
    FetchPlan plan;
    plan.secretHint = offeredName(offered, SecretHint);
    plan.texts = present(offered, TextTargets);
    plan.others = present(offered, OtherTargets);
    plan.extras = extrasOf(offered);
    if (!offeredName(offered, Tiff) && !offeredName(offered, Png)) {
        // The first is the one that the owner likes best; the others follow from it.
        const auto image = std::find_if(offered.begin(), offered.end(), isRasterImage);
        if (image != offered.end())
            plan.extras.prepend(*image);
    }
    return plan;
}

FetchPlan fetchPlanForSilentOwner()
{
    FetchPlan plan;
    plan.texts = {Utf8String, Latin1String};
    return plan;
}

bool isSecret(const QByteArray &hint)
{
    QByteArray value = hint;
    while (value.endsWith('\0'))
        value.chop(1);
    return value.trimmed() != "public";
}

QByteArray canonicalTarget(const QByteArray &target)
{
    return isMimeType(target) ? target.toLower().replace(" ", "") : target;
}

std::optional<int> textRank(const QByteArray &target)
{
    const auto found = std::find(TextTargets.begin(), TextTargets.end(), canonicalTarget(target));
    if (found == TextTargets.end())
        return std::nullopt;
    return static_cast<int>(found - TextTargets.begin());
}

bool isRasterImage(const QByteArray &target)
{
    const QByteArray canonical = canonicalTarget(target);
    return canonical.startsWith("image/") && !canonical.contains("svg");
}

} // namespace clipboard
