#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

/// Which of the formats that a clipboard's owner offers are worth asking for. Formats go by their target
/// names: MIME types, and the names of X11's older text targets. MIME types compare without regard to case
/// and spaces. Pure functions; any thread.
namespace clipboard
{

inline constexpr char Utf8PlainText[] = "text/plain;charset=utf-8";
inline constexpr char Utf8String[] = "UTF8_STRING";
inline constexpr char PlainText[] = "text/plain";
inline constexpr char Latin1String[] = "STRING";
inline constexpr char UriList[] = "text/uri-list";
inline constexpr char MozillaUrl[] = "text/x-moz-url";
inline constexpr char Tiff[] = "image/tiff";
inline constexpr char Png[] = "image/png";
inline constexpr char GnomeCopiedFiles[] = "x-special/gnome-copied-files";
inline constexpr char MateCopiedFiles[] = "x-special/mate-copied-files";
inline constexpr char KdeCutSelection[] = "application/x-kde-cutselection";
/// Offered by password managers; the value says whether the content may be remembered.
inline constexpr char SecretHint[] = "x-kde-passwordManagerHint";

/// What to ask an owner for, in order.
struct FetchPlan {
    /// The owner's name for the secret hint; asked for before anything else.
    std::optional<QByteArray> secretHint;
    /// The text in its encodings, best first: one that is delivered is enough, since the others follow from
    /// it.
    QByteArrayList texts;
    /// What else Larkspool reads.
    QByteArrayList others;
    /// What only keeps the content alive when its owner goes away.
    QByteArrayList extras;
};

/// The plan for an owner's offer. The offered names appear in it as they were offered.
FetchPlan fetchPlan(const QByteArrayList &offered);

/// The plan for an owner that does not say what it offers.
FetchPlan fetchPlanForSilentOwner();

/// Whether a value of the secret hint forbids remembering the content: any but "public" does.
bool isSecret(const QByteArray &hint);

/// The name in the form in which names compare.
QByteArray canonicalTarget(const QByteArray &target);

/// The place of a text target among those that Larkspool reads, 0 the best; nothing when it is none of them.
std::optional<int> textRank(const QByteArray &target);

/// Whether the target is an encoded picture of pixels, which toolkits convert into each other.
bool isRasterImage(const QByteArray &target);

} // namespace clipboard
