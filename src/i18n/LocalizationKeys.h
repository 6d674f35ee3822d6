#pragma once

// The localisation keys the viewer uses, in one list. A key is the source text
// of an entry in every table resources/i18n/Localizable_Tolm_<code>.ts. Keys
// are used exactly as they stand, spacing, line breaks and spelling included
// (the "\r\n" of the card messages too). The tests check that
// every key here has a non-empty translation in each of the four tables and
// that the tables hold no other keys.
//
// To add a text: add X(kName, "key") below, and a <message> with that source
// and its translation to each of the four .ts files.

// clang-format off
#define TAVRO_LOCALIZATION_KEYS(X) \
    /* Shared buttons and answers */ \
    X(kYes, "예") \
    X(kNo, "아니오") \
    X(kConfirm, "확인") \
    X(kSave, "저장") \
    X(kCancel, "취소") \
    X(kOpen, "열기") \
    X(kUnknown, "unknown") \
    /* Memory-card and clip alerts */ \
    X(kMemoryCardError, "메모리카드 오류") \
    X(kCheckMemoryCard, "메모리카드를 확인하여 주시기 바랍니다.") \
    X(kSaveFailed, "저장하지 못했습니다.") \
    X(kUnsupportedVideo, "지원하지 않는 형식으로 인코딩된 동영상입니다.") \
    /* Clip list */ \
    X(kFilterAll, "파일_전체") \
    X(kFilterContinuous, "파일_상시") \
    X(kFilterMotion, "파일_모션") \
    X(kFilterEvent, "파일_이벤트") \
    X(kFilterManual, "파일_수동") \
    X(kOpenFolder, "폴더 열기") \
    X(kDeleteClip, "선택한 영상 삭제") \
    X(kClipFolder, "영상 폴더") \
    /* Trips */ \
    X(kFilterTrips, "파일_트립") \
    X(kTripsLoading, "트립을 읽는 중…") \
    X(kNoTrips, "트립이 없습니다.") \
    X(kTripTopSpeed, "최고 %1") \
    X(kTripImpacts, "충격 %1회") \
    X(kTripEvents, "이벤트 %1개") \
    X(kMarkClipStart, "영상 시작") \
    X(kMarkImpact, "충격") \
    X(kMarkEventClip, "이벤트 녹화") \
    /* Main window header and telemetry */ \
    X(kSettings, "설정") \
    X(kModel, "모델") \
    X(kFirmware, "펌웨어") \
    X(kGSensor, "G 센서") \
    X(kSpeed, "속도") \
    X(kLatitude, "위도") \
    X(kLongitude, "경도") \
    X(kDate, "날짜") \
    X(kTime, "시간") \
    X(kImpactIndicator, "충격 감지") \
    X(kGpsIndicator, "GPS 수신") \
    X(kNoPosition, "위치 정보 없음") \
    X(kMapOffline, "오프라인: 지도를 불러올 수 없습니다.") \
    /* Transport controls (tooltips) */ \
    X(kSeekPosition, "재생 위치") \
    X(kPreviousClip, "이전 영상") \
    X(kNextClip, "다음 영상") \
    X(kPreviousFrame, "이전 프레임") \
    X(kNextFrame, "다음 프레임") \
    X(kPlay, "재생") \
    X(kPause, "일시정지") \
    X(kStop, "정지") \
    X(kMute, "음소거") \
    X(kUnmute, "음소거 해제") \
    X(kVolume, "볼륨") \
    X(kSwapCameras, "전후방 영상 전환") \
    X(kFlipVideo, "영상 뒤집기") \
    X(kZoomOut, "축소") \
    X(kActualSize, "원래 크기") \
    X(kZoomIn, "확대") \
    X(kFullScreen, "전체 화면") \
    X(kSaveStill, "정지 화면 저장") \
    X(kPrintStill, "정지 화면 인쇄") \
    X(kSaveClipCopy, "영상 사본 저장") \
    /* Menus */ \
    X(kMenuFile, "파일") \
    X(kMenuOpenFolder, "폴더 열기…") \
    X(kMenuSaveClipCopy, "영상 사본 저장…") \
    X(kMenuSaveStill, "정지 화면 저장…") \
    X(kMenuPrintStill, "정지 화면 인쇄…") \
    X(kMenuQuit, "종료") \
    X(kMenuView, "보기") \
    X(kMenuLanguage, "언어") \
    X(kMenuSpeedUnit, "속도 단위") \
    X(kMenuHelp, "도움말") \
    X(kMenuAbout, "Tavro Viewer 정보") \
    X(kAboutText, "블랙박스 영상 및 설정 뷰어") \
    /* Card and model choice pages */ \
    X(kChooseCardTitle, "블랙박스 메모리카드를 선택하여 주십시오.") \
    X(kNoCardConnected, "연결된 메모리카드가 없습니다.") \
    X(kChooseModelTitle, "메모리카드의 블랙박스 정보를 읽을 수 없습니다.\n모델을 선택하면 해당 모델의 기본 설정값이 적용됩니다.") \
    /* Camera settings windows */ \
    X(kDashcamSettings, "블랙박스 설정") \
    X(kResetSettings, "설정값 초기화") \
    X(kBack, "뒤로") \
    X(kTabCommon, "공통") \
    X(kTabContinuous, "상시모드") \
    X(kTabParking, "주차모드") \
    X(kTabExtras, "부가기능") \
    X(kOn, "사용") \
    X(kOff, "사용 안 함") \
    X(kLow, "낮음") \
    X(kMedium, "보통") \
    X(kHigh, "높음") \
    X(kFixed15fps, "고정 15fps") \
    X(kFixed30fps, "고정 30fps") \
    X(kFrontBrightness, "전방 밝기") \
    X(kRearBrightness, "후방 밝기") \
    X(kVoiceGuidance, "음성 안내") \
    X(kTimeZone, "표준 시간대") \
    X(kDaylightSaving, "서머타임") \
    X(kSpeedStamp, "속도 표시") \
    X(kLcdBrightness, "LCD 밝기") \
    X(kLcdOffTimer, "LCD 꺼짐 시간") \
    X(kAlwaysOn, "항상 켜짐") \
    X(kCameraLanguage, "카메라 언어") \
    X(kSetDateTime, "시간 설정") \
    X(kCurrentTime, "현재 시간") \
    X(kFrontResolution, "전방 해상도") \
    X(kRearResolution, "후방 해상도") \
    X(kImpactSensitivity, "충격 감도") \
    X(kDrivingGuide, "안전 운전 안내") \
    X(kVehicleType, "차량 종류") \
    X(kSedan, "세단") \
    X(kSuv, "SUV") \
    X(kTruckBus, "트럭 (버스)") \
    X(kLaneDeparture, "차선 이탈 경보") \
    X(kLaneSensitivity, "차선 이탈 감도") \
    X(kLeft, "왼쪽") \
    X(kRight, "오른쪽") \
    X(kWarningSpeed, "경보 속도") \
    X(kForwardCollision, "전방 추돌 경보") \
    X(kForwardCollisionSensitivity, "전방 추돌 감도") \
    X(kFrontVehicleDeparture, "앞차 출발 알림") \
    X(kParkingMotion, "주차 모션") \
    X(kTimeLapse, "타임랩스") \
    X(kSuperNightVision, "슈퍼 나이트 비전") \
    X(kParkingImpactSensitivity, "주차 충격 감도") \
    X(kMotionSensitivity, "모션 감도") \
    X(kParkingTimeLimit, "주차 녹화 시간") \
    X(kHoursFormat, "%1시간") \
    X(kLowVoltage12V, "저전압 차단 (12V)") \
    X(kLowVoltage24V, "저전압 차단 (24V)") \
    X(kOverwrite, "녹화 덮어쓰기") \
    X(kContinuousRecording, "상시 녹화") \
    X(kDrivingImpact, "상시 충격") \
    X(kParkingImpact, "주차 충격") \
    X(kManualRecording, "수동 녹화") \
    X(kSecurityLed, "보안 LED") \
    X(kMemoryPartition, "메모리 파티션") \
    X(kPartitionTypeA, "A Type(권장)") \
    X(kPartitionTypeB, "B Type") \
    X(kPartitionTypeC, "C Type") \
    X(kParkingOffQuestion, "주차모드를 사용하지 않는 경우,\n차량 시동이 꺼지면 주차 중 녹화가 되지 않습니다.\n주차모드 사용을 해제 하시겠습니까?") \
    X(kParkingMotionQuestion, "주차모션 선택 시,\n타임랩스 영상이 삭제되고 주차모션 영상이 저장됩니다.\n적용하시겠습니까?") \
    X(kTimeLapseQuestion, "타임랩스 선택 시 \n주차모션 영상이 삭제되고 주차모드 및 주차충격 영상이 타임랩스로 저장됩니다.\n적용하시겠습니까?") \
    /* Memory-card format and touch calibration */ \
    X(kFormatMemoryCard, "메모리 카드 포멧") \
    X(kCannotFormat, "메모리 카드를 포멧할 수 없습니다.") \
    X(kFormatWarning, "주의 : 포맷 시 메모리 카드의 모든 데이터가 삭제됩니다. \r\n포맷하려면 (예)를, 취소하려면 (아니오)를 선택 하십시오.") \
    X(kFormatting, "포맷 중 입니다.\r\n잠시만 기다려 주십시오.") \
    X(kPreparingClip, "동영상을 준비하고 있습니다.") \
    X(kFormatDone, "메모리 카드 포맷이 완료 되었습니다.") \
    X(kFormatFailed, "메모리 카드를 포멧할 수 없습니다.\r\n\r\nDravlo에서 동영상을 재생 중이거나 GPS 데이터를 수집중인 경우\r\nDravelo를 종료하고 다시 포맷하십시오.\r\n메모리카드를 사용하고 있는 디스크 유틸리티나 다른 프로그램을 종료하고\r\n메모리카드의 내용을 표시하고 있는 창이 없는지 확인한 다음 다시 포맷하십시오.") \
    X(kResetTouch, "초기화하기") \
    X(kResetTouchWarning, "주의 : 현재 설정된 화면 터치 정확도 값이 초기화 됩니다.\r\n초기화하려면 (예)를, 취소하려면 (아니오)를 선택 하십시오.") \
    X(kResetTouchDone, "화면 터치 정확도 초기화가 완료되었습니다.") \
    X(kCardLeftUnmounted, "메모리 카드가 분리된 상태입니다.\r\n메모리 카드를 뺐다가 다시 넣어 주십시오.") \
    /* Kel-family editor (model Wenna) */ \
    X(kWennaMemoryPartition, "Wenna : 메모리 파티션") \
    X(kWennaContinuous, "Wenna : 상시") \
    X(kWennaEvent, "Wenna : 이벤트") \
    X(kWennaParking, "Wenna : 주차") \
    X(kWennaManual, "Wenna : 수동") \
    X(kWennaVoiceGuidance, "Wenna : 음성 안내") \
    X(kWennaVoiceVolume, "Wenna : 음성 안내 볼륨") \
    X(kWennaParkingMode, "Wenna : 주차모드") \
    X(kWennaCutOffVoltage, "Wenna : 차단 전압") \
    X(kWennaDaylightSaving, "Wenna : 서머타임") \
    X(kWennaVoiceRecord, "Wenna : 음성 녹음") \
    X(kWennaLanguage, "Wenna : 언어") \
    X(kWennaEnglish, "Wenna : 영어") \
    X(kWennaFrench, "Wenna : 프랑스어") \
    X(kWennaSpeedUnit, "Wenna : 속도 단위") \
    X(kWennaSecurityLed, "Wenna : 보안 LED") \
    X(kWennaImpactSensitivity, "Wenna : 충격 감도") \
    X(kWennaMotionSensitivity, "Wenna : 모션 감도") \
    X(kWennaTimeZone, "Wenna : 표준 시간대") \
    X(kWennaSetDateTime, "Wenna : 날짜 및 시간 설정") \
    X(kWennaCurrentTime, "Wenna : 현재 시간") \
    X(kWennaOn, "Wenna : 사용") \
    X(kWennaOff, "Wenna : 사용 안 함") \
    /* Settings editors not available in this build */ \
    X(kSettingsEditorUnavailable, "이 모델의 설정 화면은 아직 지원되지 않습니다.") \
    X(kWebSettingsUnavailable, "블랙박스의 설정 페이지를 열 수 없습니다.") \
    X(kEmptySettingsRecordKept, "설정 페이지가 빈 설정값을 돌려주었습니다. 메모리카드의 setup.cfg는 그대로 두었습니다.") \
    /* Native camera settings page */ \
    X(kAudioRecord, "음성 녹음") \
    X(kDateFormat, "날짜 표시 형식") \
    X(kFrontFrameRate, "전방 프레임") \
    X(kFrontQuality, "전방 화질") \
    X(kWdr, "WDR") \
    X(kLeftLaneSensitivity, "왼쪽 차선 감도") \
    X(kRightLaneSensitivity, "오른쪽 차선 감도") \
    X(kWhileDriving, "주행 중") \
    X(kWhileParked, "주차 중") \
    X(kSeconds30, "30초") \
    X(kMinutes5, "5분") \
    X(kMinutes10, "10분") \
    X(kHours1, "1시간") \
    X(kHours2, "2시간") \
    X(kHours4, "4시간") \
    X(kHours6, "6시간") \
    X(kHours12, "12시간") \
    X(kHours24, "24시간") \
    X(kHours48, "48시간") \
    X(kResolutionFhd, "FHD (1920 x 1080)") \
    X(kResolutionHd, "HD (1280 x 720)") \
    X(kResolutionVga, "VGA (640 x 480)") \
    X(kFps30, "30fps") \
    X(kFps20, "20fps") \
    X(kFps15, "15fps") \
    X(kFps10, "10fps") \
    X(kKmh, "km/h") \
    X(kMph, "mph") \
    X(kSpeed50km, "50km") \
    X(kSpeed60km, "60km") \
    X(kSpeed80km, "80km") \
    X(kSpeed100km, "100km") \
    X(kSpeed30mph, "30mph") \
    X(kSpeed40mph, "40mph") \
    X(kSpeed50mph, "50mph") \
    X(kSpeed65mph, "65mph") \
    X(kDateYmd, "YYYY/MM/DD") \
    X(kDateMdy, "MM/DD/YYYY") \
    X(kDateDmy, "DD/MM/YYYY") \
    X(kMenuExportRoute, "경로 내보내기") \
    X(kExportRouteSelected, "선택한 동영상…") \
    X(kExportRouteAll, "목록의 모든 동영상 (주행별)…") \
    X(kExportRouteGpx, "GPX 경로 (*.gpx)") \
    X(kExportRouteKml, "KML 경로 (*.kml)") \
    X(kExportRouteGeoJson, "GeoJSON 경로 (*.geojson)") \
    X(kExportRouteCsv, "CSV 표 (*.csv)") \
    X(kExportRouteProgress, "경로를 내보내는 중…") \
    X(kExportRouteNoPositions, "선택한 동영상에 위치 정보가 없습니다.") \
    X(kExportRouteFailed, "경로 파일을 저장할 수 없습니다.") \
    /* Video export */ \
    X(kMarkIn, "시작 표시") \
    X(kMarkOut, "끝 표시") \
    X(kMenuExportVideo, "동영상 내보내기…") \
    X(kExportVideoTitle, "동영상 내보내기") \
    X(kExportVideoRange, "범위") \
    X(kExportVideoCurrentClip, "현재 동영상") \
    X(kExportVideoWholeTrip, "트립 전체") \
    X(kExportVideoMarked, "시작 표시(I)부터 끝 표시(O)까지") \
    X(kExportVideoCamera, "카메라") \
    X(kExportVideoFront, "전방 카메라") \
    X(kExportVideoRear, "후방 카메라") \
    X(kExportVideoSide, "나란히 (전방 | 후방)") \
    X(kExportVideoPip, "화면 속 화면 (후방 삽입)") \
    X(kExportVideoOverlay, "시각, 속도, G 값 표시") \
    X(kExportVideoStart, "내보내기…") \
    X(kExportVideoFileType, "MP4 동영상 (*.mp4)") \
    X(kExportVideoProgress, "동영상을 내보내는 중…") \
    X(kExportVideoDone, "동영상을 저장했습니다:\n%1") \
    X(kExportVideoOpenFolder, "저장 폴더 열기") \
    X(kExportVideoNothing, "이 범위에는 해당 카메라의 녹화가 없습니다.") \
    X(kExportVideoCannotWrite, "이 폴더에 동영상을 저장할 수 없습니다.") \
    X(kExportVideoFailed, "동영상을 내보낼 수 없습니다.")
// clang-format on

namespace LocalizationKeys {

#define TAVRO_DECLARE_LOCALIZATION_KEY(name, key) inline constexpr const char* name = key;
TAVRO_LOCALIZATION_KEYS(TAVRO_DECLARE_LOCALIZATION_KEY)
#undef TAVRO_DECLARE_LOCALIZATION_KEY

// Every key above, in the order of the list.
#define TAVRO_LIST_LOCALIZATION_KEY(name, key) key,
inline constexpr const char* kAllKeys[] = { TAVRO_LOCALIZATION_KEYS(TAVRO_LIST_LOCALIZATION_KEY) };
#undef TAVRO_LIST_LOCALIZATION_KEY

} // namespace LocalizationKeys
