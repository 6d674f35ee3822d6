#pragma once

#include <QString>
#include <QStringList>

// One sheet of the card operations as data: what the dialog on top of an
// editor shows now. Texts are localisation keys, except the button title
// "OK", which is shown as it stands. Buttons answer 1000, 1001, ... in order.
struct CardSheet {
    enum class Kind {
        None, // no sheet open
        Refusal, // the card may not be formatted
        Question, // "아니오" / "예"
        Progress, // the format runs; its button is disabled
        Result, // the format or the reset has ended
    };
    Kind kind = Kind::None;
    QString messageKey;
    QString informativeKey;
    QString noteKey; // a second paragraph under the informative text, or ""
    QStringList buttonKeys;
    bool buttonsEnabled = true;
    bool progressVisible = false;
    int style = 1; // informational

    bool isOpen() const { return kind != Kind::None; }
};

// The texts of the card sheets (localisation keys of the viewer's tables).
namespace CardSheetKeys {
inline const QString kOk = QStringLiteral("OK"); // shown as it stands
inline const QString kNo = QStringLiteral("아니오");
inline const QString kYes = QStringLiteral("예");
inline const QString kFormatTitle = QStringLiteral("메모리 카드 포멧");
inline const QString kCannotFormat = QStringLiteral("메모리 카드를 포멧할 수 없습니다.");
inline const QString kFormatQuestion
    = QStringLiteral("주의 : 포맷 시 메모리 카드의 모든 데이터가 삭제됩니다. \r\n포맷하려면 "
                     "(예)를, 취소하려면 (아니오)를 선택 하십시오.");
inline const QString kFormatting = QStringLiteral("포맷 중 입니다.\r\n잠시만 기다려 주십시오.");
inline const QString kFormatDone = QStringLiteral("메모리 카드 포맷이 완료 되었습니다.");
// The viewer's name is spelt two ways in this text; both stay as they are.
inline const QString kFormatFailed = QStringLiteral(
    "메모리 카드를 포멧할 수 없습니다.\r\n\r\nDravlo에서 동영상을 재생 중이거나 GPS 데이터를 "
    "수집중인 경우\r\n"
    "Dravelo를 종료하고 다시 포맷하십시오.\r\n메모리카드를 사용하고 있는 디스크 유틸리티나 다른 "
    "프로그램을 종료하고\r\n"
    "메모리카드의 내용을 표시하고 있는 창이 없는지 확인한 다음 다시 포맷하십시오.");
// Added under the failure text when the card could not be mounted again.
inline const QString kCardLeftUnmounted = QStringLiteral(
    "메모리 카드가 분리된 상태입니다.\r\n메모리 카드를 뺐다가 다시 넣어 주십시오.");
inline const QString kTouchTitle = QStringLiteral("초기화하기");
inline const QString kTouchQuestion
    = QStringLiteral("주의 : 현재 설정된 화면 터치 정확도 값이 초기화 됩니다.\r\n초기화하려면 "
                     "(예)를, 취소하려면 (아니오)를 선택 하십시오.");
inline const QString kTouchDone = QStringLiteral("화면 터치 정확도 초기화가 완료되었습니다.");
} // namespace CardSheetKeys
