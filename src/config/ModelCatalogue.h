#pragma once

#include <QString>
#include <QStringList>

// The camera models the viewer knows. A model's type is its position in the
// list; it decides the record length, the defaults and the editor.
namespace ModelCatalogue {

inline constexpr qint64 kUnknownModelType = -1;
inline constexpr qint64 kDraviModelType = 3;
inline constexpr qint64 kDraviUkModelType = 4;
inline constexpr qint64 kWennaModelType = 6; // Kel family: blackbox.cfg
inline constexpr qint64 kSelfDescribingModelType = 26; // newer cameras, found by record
inline constexpr qint64 kDraviUkLocalID = 3;
inline constexpr int kBaseFieldCount = 60;

// The 29 model codes in list order ("Ruva", "Tolm", ... "DVR-Sabro").
const QStringList& modelNameList();

// The number of record fields of a model. Dravi and Dravi UK grew ten fields
// with firmware 17. Types without their own entry (unknown, Wenna, the two
// hand-picked DVR models) get the base count of 60.
int settingVariableCount(qint64 modelType, qint32 firmwareVersionInt);

// The model type for a lower-cased product name read from setup.cfg, in the
// camera list's matching order, or -1 when no name matches.
qint64 modelTypeForProductName(const QString& lowerCasedName);

// Which settings page a model opens.
enum class EditorKind { ModelPage, Native, Kel, Web };
EditorKind editorForModelType(qint64 modelType);

} // namespace ModelCatalogue
