<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="ko_KR">
<context>
    <name>Localizable_Tolm</name>
    <message>
        <source>예</source>
        <extracomment>Shared buttons and answers: Button: confirm a question (second button)</extracomment>
        <translation>Sim</translation>
    </message>
    <message>
        <source>아니오</source>
        <extracomment>Shared buttons and answers: Button: decline a question (first button)</extracomment>
        <translation>Não</translation>
    </message>
    <message>
        <source>확인</source>
        <extracomment>Shared buttons and answers: Button: acknowledge a notice</extracomment>
        <translation>OK</translation>
    </message>
    <message>
        <source>저장</source>
        <extracomment>Shared buttons and answers: Button and save-dialog title</extracomment>
        <translation>Salvar</translation>
    </message>
    <message>
        <source>취소</source>
        <extracomment>Shared buttons and answers: Button: close without applying</extracomment>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>열기</source>
        <extracomment>Shared buttons and answers: Folder dialog: title and confirm button</extracomment>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>unknown</source>
        <extracomment>Shared buttons and answers: Model field when no camera is identified</extracomment>
        <translation>Desconhecido</translation>
    </message>
    <message>
        <source>메모리카드 오류</source>
        <extracomment>Memory-card and clip alerts: Alert title: a file on the card could not be read or written</extracomment>
        <translation>Erro no cartão de memória</translation>
    </message>
    <message>
        <source>메모리카드를 확인하여 주시기 바랍니다.</source>
        <extracomment>Memory-card and clip alerts: Alert message after a failed card write</extracomment>
        <translation>Verifique o cartão de memória.</translation>
    </message>
    <message>
        <source>저장하지 못했습니다.</source>
        <extracomment>Save a copy of a clip or a still: the file could not be written</extracomment>
        <translation>Não foi possível salvar o arquivo.</translation>
    </message>
    <message>
        <source>지원하지 않는 형식으로 인코딩된 동영상입니다.</source>
        <extracomment>Memory-card and clip alerts: Alert text: the clip cannot be played or converted</extracomment>
        <translation>Este vídeo está codificado em um formato não suportado.</translation>
    </message>
    <message>
        <source>파일_전체</source>
        <extracomment>Clip list: Clip filter button: every clip</extracomment>
        <translation>Todos</translation>
    </message>
    <message>
        <source>파일_상시</source>
        <extracomment>Clip list: Clip filter button: continuous recordings</extracomment>
        <translation>Contínuo</translation>
    </message>
    <message>
        <source>파일_모션</source>
        <extracomment>Clip list: Clip filter button: motion recordings</extracomment>
        <translation>Movimento</translation>
    </message>
    <message>
        <source>파일_이벤트</source>
        <extracomment>Clip list: Clip filter button: event (impact) recordings</extracomment>
        <translation>Evento</translation>
    </message>
    <message>
        <source>파일_수동</source>
        <extracomment>Clip list: Clip filter button: manual recordings</extracomment>
        <translation>Manual</translation>
    </message>
    <message>
        <source>폴더 열기</source>
        <extracomment>Clip list: Button tooltip: choose a folder of clips</extracomment>
        <translation>Abrir pasta</translation>
    </message>
    <message>
        <source>선택한 영상 삭제</source>
        <extracomment>Clip list: Button tooltip: delete the selected clip from the card</extracomment>
        <translation>Excluir o vídeo selecionado</translation>
    </message>
    <message>
        <source>영상 폴더</source>
        <extracomment>Clip list: Label of the folder path under the clip list</extracomment>
        <translation>Pasta de vídeos</translation>
    </message>
    <message>
        <source>파일_트립</source>
        <extracomment>Clip list: Button that lists the drives (trips) instead of the clips</extracomment>
        <translation>Viagens</translation>
    </message>
    <message>
        <source>트립을 읽는 중…</source>
        <extracomment>Trips: Shown while the trips of the folder are read</extracomment>
        <translation>Lendo as viagens…</translation>
    </message>
    <message>
        <source>트립이 없습니다.</source>
        <extracomment>Trips: The folder holds no drive</extracomment>
        <translation>Nenhuma viagem.</translation>
    </message>
    <message>
        <source>최고 %1</source>
        <extracomment>Trips: Top speed of a trip; %1 is the speed with its unit</extracomment>
        <translation>máx. %1</translation>
    </message>
    <message>
        <source>충격 %1회</source>
        <extracomment>Trips: Number of impacts in a trip</extracomment>
        <translation>impactos: %1</translation>
    </message>
    <message>
        <source>이벤트 %1개</source>
        <extracomment>Trips: Number of event marks in a trip</extracomment>
        <translation>eventos: %1</translation>
    </message>
    <message>
        <source>영상 시작</source>
        <extracomment>Trips: Tooltip of a clip boundary on the seek slider</extracomment>
        <translation>Início do vídeo</translation>
    </message>
    <message>
        <source>충격</source>
        <extracomment>Trips: Tooltip of an impact mark on the seek slider</extracomment>
        <translation>Impacto</translation>
    </message>
    <message>
        <source>이벤트 녹화</source>
        <extracomment>Trips: Tooltip of an event recording mark on the seek slider</extracomment>
        <translation>Gravação de evento</translation>
    </message>
    <message>
        <source>설정</source>
        <extracomment>Main window header and telemetry: Settings button: opens the camera settings</extracomment>
        <translation>Configurações da câmera</translation>
    </message>
    <message>
        <source>모델</source>
        <extracomment>Main window header and telemetry: Label: camera model</extracomment>
        <translation>Modelo</translation>
    </message>
    <message>
        <source>펌웨어</source>
        <extracomment>Main window header and telemetry: Label: camera firmware version</extracomment>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>G 센서</source>
        <extracomment>Main window header and telemetry: Title of the G-sensor graph</extracomment>
        <translation>Sensor G</translation>
    </message>
    <message>
        <source>속도</source>
        <extracomment>Main window header and telemetry: Title of the speedometer</extracomment>
        <translation>Velocidade</translation>
    </message>
    <message>
        <source>위도</source>
        <extracomment>Main window header and telemetry: Read-out label: latitude</extracomment>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>경도</source>
        <extracomment>Main window header and telemetry: Read-out label: longitude</extracomment>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>날짜</source>
        <extracomment>Main window header and telemetry: Read-out label: recording date</extracomment>
        <translation>Data</translation>
    </message>
    <message>
        <source>시간</source>
        <extracomment>Main window header and telemetry: Read-out label: recording time</extracomment>
        <translation>Hora</translation>
    </message>
    <message>
        <source>충격 감지</source>
        <extracomment>Main window header and telemetry: Indicator tooltip: an impact was recorded</extracomment>
        <translation>Impacto detectado</translation>
    </message>
    <message>
        <source>GPS 수신</source>
        <extracomment>Main window header and telemetry: Indicator tooltip: GPS fix present</extracomment>
        <translation>Sinal de GPS</translation>
    </message>
    <message>
        <source>위치 정보 없음</source>
        <extracomment>Main window header and telemetry: Map cover: the clip has no GPS positions</extracomment>
        <translation>Sem dados de posição</translation>
    </message>
    <message>
        <source>오프라인: 지도를 불러올 수 없습니다.</source>
        <extracomment>Main window header and telemetry: Map note: map tiles could not be downloaded</extracomment>
        <translation>Sem conexão: não foi possível carregar o mapa.</translation>
    </message>
    <message>
        <source>재생 위치</source>
        <extracomment>Transport controls (tooltips): Seek slider</extracomment>
        <translation>Posição de reprodução</translation>
    </message>
    <message>
        <source>이전 영상</source>
        <extracomment>Transport controls (tooltips): Go to the previous clip</extracomment>
        <translation>Vídeo anterior</translation>
    </message>
    <message>
        <source>다음 영상</source>
        <extracomment>Transport controls (tooltips): Go to the next clip</extracomment>
        <translation>Próximo vídeo</translation>
    </message>
    <message>
        <source>이전 프레임</source>
        <extracomment>Transport controls (tooltips): Step one frame back</extracomment>
        <translation>Quadro anterior</translation>
    </message>
    <message>
        <source>다음 프레임</source>
        <extracomment>Transport controls (tooltips): Step one frame forward</extracomment>
        <translation>Próximo quadro</translation>
    </message>
    <message>
        <source>재생</source>
        <extracomment>Transport controls (tooltips): Start playback</extracomment>
        <translation>Reproduzir</translation>
    </message>
    <message>
        <source>일시정지</source>
        <extracomment>Transport controls (tooltips): Pause playback</extracomment>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>정지</source>
        <extracomment>Transport controls (tooltips): Stop playback</extracomment>
        <translation>Parar</translation>
    </message>
    <message>
        <source>음소거</source>
        <extracomment>Transport controls (tooltips): Mute the sound</extracomment>
        <translation>Silenciar</translation>
    </message>
    <message>
        <source>음소거 해제</source>
        <extracomment>Transport controls (tooltips): Turn the sound back on</extracomment>
        <translation>Ativar som</translation>
    </message>
    <message>
        <source>볼륨</source>
        <extracomment>Transport controls (tooltips): Volume slider</extracomment>
        <translation>Volume</translation>
    </message>
    <message>
        <source>전후방 영상 전환</source>
        <extracomment>Transport controls (tooltips): Exchange the front and rear views (also View menu)</extracomment>
        <translation>Trocar dianteira e traseira</translation>
    </message>
    <message>
        <source>영상 뒤집기</source>
        <extracomment>Transport controls (tooltips): Turn the picture upside down (also View menu)</extracomment>
        <translation>Inverter vídeo</translation>
    </message>
    <message>
        <source>축소</source>
        <extracomment>Transport controls (tooltips): Zoom the front view out</extracomment>
        <translation>Diminuir zoom</translation>
    </message>
    <message>
        <source>원래 크기</source>
        <extracomment>Transport controls (tooltips): Reset the zoom</extracomment>
        <translation>Tamanho original</translation>
    </message>
    <message>
        <source>확대</source>
        <extracomment>Transport controls (tooltips): Zoom the front view in</extracomment>
        <translation>Aumentar zoom</translation>
    </message>
    <message>
        <source>전체 화면</source>
        <extracomment>Transport controls (tooltips): Full-screen playback (also View menu)</extracomment>
        <translation>Tela cheia</translation>
    </message>
    <message>
        <source>정지 화면 저장</source>
        <extracomment>Transport controls (tooltips): Save the current picture as an image</extracomment>
        <translation>Salvar imagem</translation>
    </message>
    <message>
        <source>정지 화면 인쇄</source>
        <extracomment>Transport controls (tooltips): Print the current picture</extracomment>
        <translation>Imprimir imagem</translation>
    </message>
    <message>
        <source>영상 사본 저장</source>
        <extracomment>Transport controls (tooltips): Save a copy of the selected clip</extracomment>
        <translation>Salvar uma cópia do vídeo</translation>
    </message>
    <message>
        <source>파일</source>
        <extracomment>Menus: Menu title</extracomment>
        <translation>Arquivo</translation>
    </message>
    <message>
        <source>폴더 열기…</source>
        <extracomment>Menus: File menu item</extracomment>
        <translation>Abrir pasta…</translation>
    </message>
    <message>
        <source>영상 사본 저장…</source>
        <extracomment>Menus: File menu item</extracomment>
        <translation>Salvar uma cópia…</translation>
    </message>
    <message>
        <source>정지 화면 저장…</source>
        <extracomment>Menus: File menu item</extracomment>
        <translation>Salvar imagem…</translation>
    </message>
    <message>
        <source>정지 화면 인쇄…</source>
        <extracomment>Menus: File menu item</extracomment>
        <translation>Imprimir imagem…</translation>
    </message>
    <message>
        <source>종료</source>
        <extracomment>Menus: File menu item</extracomment>
        <translation>Sair</translation>
    </message>
    <message>
        <source>보기</source>
        <extracomment>Menus: Menu title</extracomment>
        <translation>Exibir</translation>
    </message>
    <message>
        <source>언어</source>
        <extracomment>Menus: Menu title: the viewer&apos;s language</extracomment>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>속도 단위</source>
        <extracomment>Menus: Menu title; also a settings caption</extracomment>
        <translation>Unidade de velocidade</translation>
    </message>
    <message>
        <source>도움말</source>
        <extracomment>Menus: Menu title</extracomment>
        <translation>Ajuda</translation>
    </message>
    <message>
        <source>Tavro Viewer 정보</source>
        <extracomment>Menus: Help menu item</extracomment>
        <translation>Sobre o Tavro Viewer</translation>
    </message>
    <message>
        <source>블랙박스 영상 및 설정 뷰어</source>
        <extracomment>Menus: About box: what the program is</extracomment>
        <translation>Visualizador de vídeos e configurações de câmera veicular</translation>
    </message>
    <message>
        <source>블랙박스 메모리카드를 선택하여 주십시오.</source>
        <extracomment>Card and model choice pages: Card choice page: title</extracomment>
        <translation>Escolha o cartão de memória da câmera veicular.</translation>
    </message>
    <message>
        <source>연결된 메모리카드가 없습니다.</source>
        <extracomment>Card and model choice pages: Card choice page: no removable card is mounted</extracomment>
        <translation>Nenhum cartão de memória está conectado.</translation>
    </message>
    <message>
        <source>메모리카드의 블랙박스 정보를 읽을 수 없습니다.
모델을 선택하면 해당 모델의 기본 설정값이 적용됩니다.</source>
        <extracomment>Card and model choice pages: Model choice page: title, two lines</extracomment>
        <translation>Não foi possível ler as informações da câmera no cartão de memória.
Ao escolher um modelo, as configurações padrão desse modelo serão aplicadas.</translation>
    </message>
    <message>
        <source>블랙박스 설정</source>
        <extracomment>Camera settings windows: Settings window title</extracomment>
        <translation>Configurações da câmera veicular</translation>
    </message>
    <message>
        <source>설정값 초기화</source>
        <extracomment>Camera settings windows: Button: restore the camera&apos;s default settings</extracomment>
        <translation>Restaurar padrões</translation>
    </message>
    <message>
        <source>뒤로</source>
        <extracomment>Camera settings windows: Settings page button: back to the list</extracomment>
        <translation>Voltar</translation>
    </message>
    <message>
        <source>공통</source>
        <extracomment>Camera settings windows: Settings tab: general</extracomment>
        <translation>Geral</translation>
    </message>
    <message>
        <source>상시모드</source>
        <extracomment>Camera settings windows: Settings tab: recording while driving</extracomment>
        <translation>Gravação contínua</translation>
    </message>
    <message>
        <source>주차모드</source>
        <extracomment>Camera settings windows: Settings tab and alert title: parking recording</extracomment>
        <translation>Modo estacionamento</translation>
    </message>
    <message>
        <source>부가기능</source>
        <extracomment>Camera settings windows: Settings tab: additional functions</extracomment>
        <translation>Recursos adicionais</translation>
    </message>
    <message>
        <source>사용</source>
        <extracomment>Camera settings windows: Radio row: feature on</extracomment>
        <translation>Ativado</translation>
    </message>
    <message>
        <source>사용 안 함</source>
        <extracomment>Camera settings windows: Radio row: feature off</extracomment>
        <translation>Desativado</translation>
    </message>
    <message>
        <source>낮음</source>
        <extracomment>Camera settings windows: Quality column or slider guide: low</extracomment>
        <translation>Baixa</translation>
    </message>
    <message>
        <source>보통</source>
        <extracomment>Camera settings windows: Quality column or slider guide: medium</extracomment>
        <translation>Média</translation>
    </message>
    <message>
        <source>높음</source>
        <extracomment>Camera settings windows: Quality column or slider guide: high</extracomment>
        <translation>Alta</translation>
    </message>
    <message>
        <source>고정 15fps</source>
        <extracomment>Camera settings windows: Frame-rate column</extracomment>
        <translation>15 fps fixo</translation>
    </message>
    <message>
        <source>고정 30fps</source>
        <extracomment>Camera settings windows: Frame-rate column</extracomment>
        <translation>30 fps fixo</translation>
    </message>
    <message>
        <source>전방 밝기</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Brilho da câmera dianteira</translation>
    </message>
    <message>
        <source>후방 밝기</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Brilho da câmera traseira</translation>
    </message>
    <message>
        <source>음성 안내</source>
        <extracomment>Camera settings windows: General tab: voice prompts and their volume</extracomment>
        <translation>Orientação por voz</translation>
    </message>
    <message>
        <source>표준 시간대</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Fuso horário</translation>
    </message>
    <message>
        <source>서머타임</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Horário de verão</translation>
    </message>
    <message>
        <source>속도 표시</source>
        <extracomment>Camera settings windows: General tab: speed printed on the video</extracomment>
        <translation>Exibir velocidade no vídeo</translation>
    </message>
    <message>
        <source>LCD 밝기</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Brilho da tela</translation>
    </message>
    <message>
        <source>LCD 꺼짐 시간</source>
        <extracomment>Camera settings windows: General tab</extracomment>
        <translation>Desligamento da tela</translation>
    </message>
    <message>
        <source>항상 켜짐</source>
        <extracomment>Camera settings windows: Screen off timer row: never off</extracomment>
        <translation>Sempre ligada</translation>
    </message>
    <message>
        <source>카메라 언어</source>
        <extracomment>Camera settings windows: General tab: the camera&apos;s voice and menu language</extracomment>
        <translation>Idioma da câmera</translation>
    </message>
    <message>
        <source>시간 설정</source>
        <extracomment>Camera settings windows: Clock group: set the camera&apos;s clock on its next start</extracomment>
        <translation>Ajustar data e hora</translation>
    </message>
    <message>
        <source>현재 시간</source>
        <extracomment>Camera settings windows: Clock group button: take the computer&apos;s time</extracomment>
        <translation>Hora atual</translation>
    </message>
    <message>
        <source>전방 해상도</source>
        <extracomment>Camera settings windows: Recording tab</extracomment>
        <translation>Resolução da câmera dianteira</translation>
    </message>
    <message>
        <source>후방 해상도</source>
        <extracomment>Camera settings windows: Recording tab</extracomment>
        <translation>Resolução da câmera traseira</translation>
    </message>
    <message>
        <source>충격 감도</source>
        <extracomment>Camera settings windows: Recording tab: G-sensor event trigger</extracomment>
        <translation>Sensibilidade a impactos</translation>
    </message>
    <message>
        <source>안전 운전 안내</source>
        <extracomment>Camera settings windows: Recording tab</extracomment>
        <translation>Assistente de direção segura</translation>
    </message>
    <message>
        <source>차량 종류</source>
        <extracomment>Camera settings windows: Recording tab: vehicle height for driver assistance</extracomment>
        <translation>Tipo de veículo</translation>
    </message>
    <message>
        <source>세단</source>
        <extracomment>Camera settings windows: Vehicle type row</extracomment>
        <translation>Sedã</translation>
    </message>
    <message>
        <source>SUV</source>
        <extracomment>Camera settings windows: Vehicle type row</extracomment>
        <translation>SUV</translation>
    </message>
    <message>
        <source>트럭 (버스)</source>
        <extracomment>Camera settings windows: Vehicle type row</extracomment>
        <translation>Caminhão (ônibus)</translation>
    </message>
    <message>
        <source>차선 이탈 경보</source>
        <extracomment>Camera settings windows: Recording tab: LDWS</extracomment>
        <translation>Alerta de saída de faixa</translation>
    </message>
    <message>
        <source>차선 이탈 감도</source>
        <extracomment>Camera settings windows: Recording tab</extracomment>
        <translation>Sensibilidade do alerta de saída de faixa</translation>
    </message>
    <message>
        <source>왼쪽</source>
        <extracomment>Camera settings windows: Lane sensitivity: left line</extracomment>
        <translation>Esquerda</translation>
    </message>
    <message>
        <source>오른쪽</source>
        <extracomment>Camera settings windows: Lane sensitivity: right line</extracomment>
        <translation>Direita</translation>
    </message>
    <message>
        <source>경보 속도</source>
        <extracomment>Camera settings windows: Recording tab: speed from which lane warnings sound</extracomment>
        <translation>Velocidade de alerta</translation>
    </message>
    <message>
        <source>전방 추돌 경보</source>
        <extracomment>Camera settings windows: Recording tab: FCWS</extracomment>
        <translation>Alerta de colisão frontal</translation>
    </message>
    <message>
        <source>전방 추돌 감도</source>
        <extracomment>Camera settings windows: Recording tab</extracomment>
        <translation>Sensibilidade do alerta de colisão</translation>
    </message>
    <message>
        <source>앞차 출발 알림</source>
        <extracomment>Camera settings windows: Recording tab: FVDW</extracomment>
        <translation>Alerta de partida do veículo à frente</translation>
    </message>
    <message>
        <source>주차 모션</source>
        <extracomment>Camera settings windows: Parking mode row: motion detection</extracomment>
        <translation>Movimento no estacionamento</translation>
    </message>
    <message>
        <source>타임랩스</source>
        <extracomment>Camera settings windows: Parking mode row</extracomment>
        <translation>Time-lapse</translation>
    </message>
    <message>
        <source>슈퍼 나이트 비전</source>
        <extracomment>Camera settings windows: Parking tab</extracomment>
        <translation>Super visão noturna</translation>
    </message>
    <message>
        <source>주차 충격 감도</source>
        <extracomment>Camera settings windows: Parking tab</extracomment>
        <translation>Sensibilidade a impactos no estacionamento</translation>
    </message>
    <message>
        <source>모션 감도</source>
        <extracomment>Camera settings windows: Parking tab</extracomment>
        <translation>Sensibilidade a movimento</translation>
    </message>
    <message>
        <source>주차 녹화 시간</source>
        <extracomment>Camera settings windows: Parking tab: how long parking recording lasts</extracomment>
        <translation>Tempo de gravação no estacionamento</translation>
    </message>
    <message>
        <source>%1시간</source>
        <extracomment>Camera settings windows: Parking time guide label; %1 is a number of hours</extracomment>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>저전압 차단 (12V)</source>
        <extracomment>Camera settings windows: Parking tab: battery protection, 12 V vehicles</extracomment>
        <translation>Corte por baixa tensão (12 V)</translation>
    </message>
    <message>
        <source>저전압 차단 (24V)</source>
        <extracomment>Camera settings windows: Parking tab: battery protection, 24 V vehicles</extracomment>
        <translation>Corte por baixa tensão (24 V)</translation>
    </message>
    <message>
        <source>녹화 덮어쓰기</source>
        <extracomment>Camera settings windows: Extras tab: which recordings may be overwritten when the card is full</extracomment>
        <translation>Substituir gravações</translation>
    </message>
    <message>
        <source>상시 녹화</source>
        <extracomment>Camera settings windows: Overwrite check box</extracomment>
        <translation>Gravação contínua</translation>
    </message>
    <message>
        <source>상시 충격</source>
        <extracomment>Camera settings windows: Overwrite check box: impacts while driving</extracomment>
        <translation>Impacto em movimento</translation>
    </message>
    <message>
        <source>주차 충격</source>
        <extracomment>Camera settings windows: Overwrite check box: impacts while parked</extracomment>
        <translation>Impacto no estacionamento</translation>
    </message>
    <message>
        <source>수동 녹화</source>
        <extracomment>Camera settings windows: Overwrite check box</extracomment>
        <translation>Gravação manual</translation>
    </message>
    <message>
        <source>보안 LED</source>
        <extracomment>Camera settings windows: Extras tab</extracomment>
        <translation>LED de segurança</translation>
    </message>
    <message>
        <source>메모리 파티션</source>
        <extracomment>Camera settings windows: Extras tab</extracomment>
        <translation>Partição da memória</translation>
    </message>
    <message>
        <source>A Type(권장)</source>
        <extracomment>Camera settings windows: Memory partition column</extracomment>
        <translation>Tipo A (recomendado)</translation>
    </message>
    <message>
        <source>B Type</source>
        <extracomment>Camera settings windows: Memory partition column</extracomment>
        <translation>Tipo B</translation>
    </message>
    <message>
        <source>C Type</source>
        <extracomment>Camera settings windows: Memory partition column</extracomment>
        <translation>Tipo C</translation>
    </message>
    <message>
        <source>주차모드를 사용하지 않는 경우,
차량 시동이 꺼지면 주차 중 녹화가 되지 않습니다.
주차모드 사용을 해제 하시겠습니까?</source>
        <extracomment>Camera settings windows: Question when parking mode is turned off</extracomment>
        <translation>Sem o modo estacionamento,
nada é gravado com o veículo estacionado e o motor desligado.
Desativar o modo estacionamento?</translation>
    </message>
    <message>
        <source>주차모션 선택 시,
타임랩스 영상이 삭제되고 주차모션 영상이 저장됩니다.
적용하시겠습니까?</source>
        <extracomment>Camera settings windows: Question when parking motion is chosen</extracomment>
        <translation>Ao escolher movimento no estacionamento,
os vídeos em time-lapse serão excluídos e os vídeos de movimento no estacionamento serão salvos.
Aplicar esta configuração?</translation>
    </message>
    <message>
        <source>타임랩스 선택 시 
주차모션 영상이 삭제되고 주차모드 및 주차충격 영상이 타임랩스로 저장됩니다.
적용하시겠습니까?</source>
        <extracomment>Camera settings windows: Question when time-lapse is chosen</extracomment>
        <translation>Ao escolher time-lapse,
os vídeos de movimento no estacionamento serão excluídos e os vídeos de estacionamento e de impacto no estacionamento serão salvos em time-lapse.
Aplicar esta configuração?</translation>
    </message>
    <message>
        <source>메모리 카드 포멧</source>
        <extracomment>Memory-card format and touch calibration: Format question, progress and result title; format button</extracomment>
        <translation>Formatar cartão de memória</translation>
    </message>
    <message>
        <source>메모리 카드를 포멧할 수 없습니다.</source>
        <extracomment>Memory-card format and touch calibration: Format refused: not a removable card</extracomment>
        <translation>Não é possível formatar o cartão de memória.</translation>
    </message>
    <message>
        <source>주의 : 포맷 시 메모리 카드의 모든 데이터가 삭제됩니다. &#xd;
포맷하려면 (예)를, 취소하려면 (아니오)를 선택 하십시오.</source>
        <extracomment>Memory-card format and touch calibration: Format question</extracomment>
        <translation>Atenção: a formatação apaga todos os dados do cartão de memória.&#xd;
Escolha (Sim) para formatar ou (Não) para cancelar.</translation>
    </message>
    <message>
        <source>포맷 중 입니다.&#xd;
잠시만 기다려 주십시오.</source>
        <extracomment>Memory-card format and touch calibration: Format progress</extracomment>
        <translation>Formatando o cartão de memória.&#xd;
Aguarde um momento.</translation>
    </message>
    <message>
        <source>동영상을 준비하고 있습니다.</source>
        <extracomment>Playback: a clip is being converted (shown with a Cancel button)</extracomment>
        <translation>Preparando o vídeo…</translation>
    </message>
    <message>
        <source>메모리 카드 포맷이 완료 되었습니다.</source>
        <extracomment>Memory-card format and touch calibration: Format result: success</extracomment>
        <translation>O cartão de memória foi formatado.</translation>
    </message>
    <message>
        <source>메모리 카드를 포멧할 수 없습니다.&#xd;
&#xd;
Dravlo에서 동영상을 재생 중이거나 GPS 데이터를 수집중인 경우&#xd;
Dravelo를 종료하고 다시 포맷하십시오.&#xd;
메모리카드를 사용하고 있는 디스크 유틸리티나 다른 프로그램을 종료하고&#xd;
메모리카드의 내용을 표시하고 있는 창이 없는지 확인한 다음 다시 포맷하십시오.</source>
        <extracomment>Memory-card format and touch calibration: Format result: the tool failed</extracomment>
        <translation>Não é possível formatar o cartão de memória.&#xd;
&#xd;
Se o Dravlo estiver reproduzindo um vídeo ou coletando dados de GPS,&#xd;
feche o Dravelo e tente formatar novamente.&#xd;
Feche o utilitário de disco ou qualquer outro programa que esteja usando o cartão de memória,&#xd;
verifique se nenhuma janela está exibindo o conteúdo do cartão de memória e tente formatar novamente.</translation>
    </message>
    <message>
        <source>초기화하기</source>
        <extracomment>Memory-card format and touch calibration: Touch-calibration reset: button, question and result title</extracomment>
        <translation>Redefinir calibração do toque</translation>
    </message>
    <message>
        <source>주의 : 현재 설정된 화면 터치 정확도 값이 초기화 됩니다.&#xd;
초기화하려면 (예)를, 취소하려면 (아니오)를 선택 하십시오.</source>
        <extracomment>Memory-card format and touch calibration: Touch-calibration question</extracomment>
        <translation>Atenção: a calibração atual da tela sensível ao toque será redefinida.&#xd;
Escolha (Sim) para redefinir ou (Não) para cancelar.</translation>
    </message>
    <message>
        <source>화면 터치 정확도 초기화가 완료되었습니다.</source>
        <extracomment>Memory-card format and touch calibration: Touch-calibration result; the camera applies it at its next start</extracomment>
        <translation>A calibração da tela sensível ao toque foi redefinida.</translation>
    </message>
    <message>
        <source>메모리 카드가 분리된 상태입니다.&#xd;
메모리 카드를 뺐다가 다시 넣어 주십시오.</source>
        <extracomment>Memory-card format and touch calibration: Added under the format failure when the card could not be mounted again</extracomment>
        <translation>O cartão de memória já não está montado.&#xd;
Retire o cartão e insira-o novamente.</translation>
    </message>
    <message>
        <source>Wenna : 메모리 파티션</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Partição da memória</translation>
    </message>
    <message>
        <source>Wenna : 상시</source>
        <extracomment>Kel-family editor (model Wenna): Partition legend: continuous recording</extracomment>
        <translation>Contínuo</translation>
    </message>
    <message>
        <source>Wenna : 이벤트</source>
        <extracomment>Kel-family editor (model Wenna): Partition legend: event recording</extracomment>
        <translation>Evento</translation>
    </message>
    <message>
        <source>Wenna : 주차</source>
        <extracomment>Kel-family editor (model Wenna): Partition legend: parking recording</extracomment>
        <translation>Estacionamento</translation>
    </message>
    <message>
        <source>Wenna : 수동</source>
        <extracomment>Kel-family editor (model Wenna): Partition legend: manual recording</extracomment>
        <translation>Manual</translation>
    </message>
    <message>
        <source>Wenna : 음성 안내</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Orientação por voz</translation>
    </message>
    <message>
        <source>Wenna : 음성 안내 볼륨</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Volume da orientação por voz</translation>
    </message>
    <message>
        <source>Wenna : 주차모드</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Modo estacionamento</translation>
    </message>
    <message>
        <source>Wenna : 차단 전압</source>
        <extracomment>Kel-family editor (model Wenna): Section title: battery cut-off voltage in parking mode</extracomment>
        <translation>Tensão de corte</translation>
    </message>
    <message>
        <source>Wenna : 서머타임</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Horário de verão</translation>
    </message>
    <message>
        <source>Wenna : 음성 녹음</source>
        <extracomment>Kel-family editor (model Wenna): Section title: microphone</extracomment>
        <translation>Gravação de áudio</translation>
    </message>
    <message>
        <source>Wenna : 언어</source>
        <extracomment>Kel-family editor (model Wenna): Section title: the camera&apos;s language</extracomment>
        <translation>Idioma da câmera</translation>
    </message>
    <message>
        <source>Wenna : 영어</source>
        <extracomment>Kel-family editor (model Wenna): Camera language row</extracomment>
        <translation>Inglês</translation>
    </message>
    <message>
        <source>Wenna : 프랑스어</source>
        <extracomment>Kel-family editor (model Wenna): Camera language row</extracomment>
        <translation>Francês</translation>
    </message>
    <message>
        <source>Wenna : 속도 단위</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Unidade de velocidade</translation>
    </message>
    <message>
        <source>Wenna : 보안 LED</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>LED de segurança</translation>
    </message>
    <message>
        <source>Wenna : 충격 감도</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Sensibilidade a impactos</translation>
    </message>
    <message>
        <source>Wenna : 모션 감도</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Sensibilidade a movimento</translation>
    </message>
    <message>
        <source>Wenna : 표준 시간대</source>
        <extracomment>Kel-family editor (model Wenna): Section title</extracomment>
        <translation>Fuso horário</translation>
    </message>
    <message>
        <source>Wenna : 날짜 및 시간 설정</source>
        <extracomment>Kel-family editor (model Wenna): Check box: set the camera&apos;s clock</extracomment>
        <translation>Ajustar data e hora</translation>
    </message>
    <message>
        <source>Wenna : 현재 시간</source>
        <extracomment>Kel-family editor (model Wenna): Button: take the computer&apos;s time</extracomment>
        <translation>Hora atual</translation>
    </message>
    <message>
        <source>Wenna : 사용</source>
        <extracomment>Kel-family editor (model Wenna): Radio row: on</extracomment>
        <translation>Ativado</translation>
    </message>
    <message>
        <source>Wenna : 사용 안 함</source>
        <extracomment>Kel-family editor (model Wenna): Radio row: off</extracomment>
        <translation>Desativado</translation>
    </message>
    <message>
        <source>이 모델의 설정 화면은 아직 지원되지 않습니다.</source>
        <extracomment>Settings button: alert when this build has no editor for the camera model</extracomment>
        <translation>A tela de configurações deste modelo ainda não é suportada.</translation>
    </message>
    <message>
        <source>블랙박스의 설정 페이지를 열 수 없습니다.</source>
        <extracomment>Settings button: alert when the camera&apos;s own settings page cannot be opened</extracomment>
        <translation>Não é possível abrir a página de configurações da câmera.</translation>
    </message>
    <message>
        <source>설정 페이지가 빈 설정값을 돌려주었습니다. 메모리카드의 setup.cfg는 그대로 두었습니다.</source>
        <extracomment>Camera settings page on the card: Save got an empty record from the page and wrote nothing</extracomment>
        <translation>A página de configurações da câmera devolveu um registro vazio. O setup.cfg do cartão foi mantido como estava.</translation>
    </message>
    <message>
        <source>음성 녹음</source>
        <extracomment>Native camera settings page: Common tab: record sound with the video</extracomment>
        <translation>Gravação de áudio</translation>
    </message>
    <message>
        <source>날짜 표시 형식</source>
        <extracomment>Native camera settings page: Common tab: how the camera stamps the date</extracomment>
        <translation>Formato da data</translation>
    </message>
    <message>
        <source>전방 프레임</source>
        <extracomment>Native camera settings page: Continuous tab: front camera frame rate</extracomment>
        <translation>Quadros/s dianteira</translation>
    </message>
    <message>
        <source>전방 화질</source>
        <extracomment>Native camera settings page: Continuous tab: front camera picture quality</extracomment>
        <translation>Qualidade dianteira</translation>
    </message>
    <message>
        <source>WDR</source>
        <extracomment>Native camera settings page: Continuous tab: wide dynamic range</extracomment>
        <translation>WDR</translation>
    </message>
    <message>
        <source>왼쪽 차선 감도</source>
        <extracomment>Native camera settings page: Continuous tab: left lane departure sensitivity</extracomment>
        <translation>Sensib. faixa esquerda</translation>
    </message>
    <message>
        <source>오른쪽 차선 감도</source>
        <extracomment>Native camera settings page: Continuous tab: right lane departure sensitivity</extracomment>
        <translation>Sensib. faixa direita</translation>
    </message>
    <message>
        <source>주행 중</source>
        <extracomment>Native camera settings page: Security LED row: lit while driving</extracomment>
        <translation>Em movimento</translation>
    </message>
    <message>
        <source>주차 중</source>
        <extracomment>Native camera settings page: Security LED row: lit while parked</extracomment>
        <translation>Estacionado</translation>
    </message>
    <message>
        <source>30초</source>
        <extracomment>Native camera settings page: LCD off timer row: 30 seconds</extracomment>
        <translation>30 s</translation>
    </message>
    <message>
        <source>5분</source>
        <extracomment>Native camera settings page: LCD off timer row: 5 minutes</extracomment>
        <translation>5 min</translation>
    </message>
    <message>
        <source>10분</source>
        <extracomment>Native camera settings page: LCD off timer row: 10 minutes</extracomment>
        <translation>10 min</translation>
    </message>
    <message>
        <source>1시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>1 h</translation>
    </message>
    <message>
        <source>2시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>2 h</translation>
    </message>
    <message>
        <source>4시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>4 h</translation>
    </message>
    <message>
        <source>6시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>6 h</translation>
    </message>
    <message>
        <source>12시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>12 h</translation>
    </message>
    <message>
        <source>24시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>24 h</translation>
    </message>
    <message>
        <source>48시간</source>
        <extracomment>Native camera settings page: Parking time guide label</extracomment>
        <translation>48 h</translation>
    </message>
    <message>
        <source>FHD (1920 x 1080)</source>
        <extracomment>Native camera settings page: Resolution column</extracomment>
        <translation>FHD (1920 x 1080)</translation>
    </message>
    <message>
        <source>HD (1280 x 720)</source>
        <extracomment>Native camera settings page: Resolution column</extracomment>
        <translation>HD (1280 x 720)</translation>
    </message>
    <message>
        <source>VGA (640 x 480)</source>
        <extracomment>Native camera settings page: Resolution column</extracomment>
        <translation>VGA (640 x 480)</translation>
    </message>
    <message>
        <source>30fps</source>
        <extracomment>Native camera settings page: Frame-rate column</extracomment>
        <translation>30 qps</translation>
    </message>
    <message>
        <source>20fps</source>
        <extracomment>Native camera settings page: Frame-rate column</extracomment>
        <translation>20 qps</translation>
    </message>
    <message>
        <source>15fps</source>
        <extracomment>Native camera settings page: Frame-rate column</extracomment>
        <translation>15 qps</translation>
    </message>
    <message>
        <source>10fps</source>
        <extracomment>Native camera settings page: Frame-rate column</extracomment>
        <translation>10 qps</translation>
    </message>
    <message>
        <source>km/h</source>
        <extracomment>Native camera settings page: Speed unit row</extracomment>
        <translation>km/h</translation>
    </message>
    <message>
        <source>mph</source>
        <extracomment>Native camera settings page: Speed unit row</extracomment>
        <translation>mph</translation>
    </message>
    <message>
        <source>50km</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>50 km/h</translation>
    </message>
    <message>
        <source>60km</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>60 km/h</translation>
    </message>
    <message>
        <source>80km</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>80 km/h</translation>
    </message>
    <message>
        <source>100km</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>100 km/h</translation>
    </message>
    <message>
        <source>30mph</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>30 mph</translation>
    </message>
    <message>
        <source>40mph</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>40 mph</translation>
    </message>
    <message>
        <source>50mph</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>50 mph</translation>
    </message>
    <message>
        <source>65mph</source>
        <extracomment>Native camera settings page: Lane warning speed row</extracomment>
        <translation>65 mph</translation>
    </message>
    <message>
        <source>YYYY/MM/DD</source>
        <extracomment>Native camera settings page: Date format row</extracomment>
        <translation>AAAA/MM/DD</translation>
    </message>
    <message>
        <source>MM/DD/YYYY</source>
        <extracomment>Native camera settings page: Date format row</extracomment>
        <translation>MM/DD/AAAA</translation>
    </message>
    <message>
        <source>DD/MM/YYYY</source>
        <extracomment>Native camera settings page: Date format row</extracomment>
        <translation>DD/MM/AAAA</translation>
    </message>
    <message>
        <source>경로 내보내기</source>
        <extracomment>Menu File: submenu that exports GPS routes</extracomment>
        <translation>Exportar rota</translation>
    </message>
    <message>
        <source>선택한 동영상…</source>
        <extracomment>Export route submenu: the selected clip</extracomment>
        <translation>Vídeo selecionado…</translation>
    </message>
    <message>
        <source>목록의 모든 동영상 (주행별)…</source>
        <extracomment>Export route submenu: every clip of the list, grouped into drives</extracomment>
        <translation>Todos os vídeos da lista, por viagem…</translation>
    </message>
    <message>
        <source>GPX 경로 (*.gpx)</source>
        <extracomment>Save dialog file type</extracomment>
        <translation>Rota GPX (*.gpx)</translation>
    </message>
    <message>
        <source>KML 경로 (*.kml)</source>
        <extracomment>Save dialog file type</extracomment>
        <translation>Rota KML (*.kml)</translation>
    </message>
    <message>
        <source>GeoJSON 경로 (*.geojson)</source>
        <extracomment>Save dialog file type</extracomment>
        <translation>Rota GeoJSON (*.geojson)</translation>
    </message>
    <message>
        <source>CSV 표 (*.csv)</source>
        <extracomment>Save dialog file type: every telemetry sample as a table</extracomment>
        <translation>Tabela CSV (*.csv)</translation>
    </message>
    <message>
        <source>경로를 내보내는 중…</source>
        <extracomment>Progress dialog while clips are read</extracomment>
        <translation>Exportando a rota…</translation>
    </message>
    <message>
        <source>선택한 동영상에 위치 정보가 없습니다.</source>
        <extracomment>Message: the clips carry no GPS position, nothing was written</extracomment>
        <translation>Estes vídeos não têm posições de GPS, por isso não há rota para exportar. Nada foi salvo.</translation>
    </message>
    <message>
        <source>경로 파일을 저장할 수 없습니다.</source>
        <extracomment>Message: the route file could not be written</extracomment>
        <translation>Não foi possível salvar o arquivo da rota. Escolha outra pasta.</translation>
    </message>
    <message>
        <source>시작 표시</source>
        <extracomment>Seek slider tooltip: the in mark of the span to export, then its time</extracomment>
        <translation>Entrada</translation>
    </message>
    <message>
        <source>끝 표시</source>
        <extracomment>Seek slider tooltip: the out mark of the span to export, then its time</extracomment>
        <translation>Saída</translation>
    </message>
    <message>
        <source>동영상 내보내기…</source>
        <extracomment>Menu File: one MP4 of the clip, the trip or the marked span</extracomment>
        <translation>Exportar vídeo…</translation>
    </message>
    <message>
        <source>동영상 내보내기</source>
        <extracomment>Title of the video export dialog</extracomment>
        <translation>Exportar vídeo</translation>
    </message>
    <message>
        <source>범위</source>
        <extracomment>Video export: caption of the range choices</extracomment>
        <translation>Intervalo</translation>
    </message>
    <message>
        <source>현재 동영상</source>
        <extracomment>Video export: the clip shown</extracomment>
        <translation>Vídeo atual</translation>
    </message>
    <message>
        <source>트립 전체</source>
        <extracomment>Video export: the whole trip playing</extracomment>
        <translation>Viagem inteira</translation>
    </message>
    <message>
        <source>시작 표시(I)부터 끝 표시(O)까지</source>
        <extracomment>Video export: the span between the marks set with the I and O keys</extracomment>
        <translation>Da marca de entrada (I) à marca de saída (O)</translation>
    </message>
    <message>
        <source>카메라</source>
        <extracomment>Video export: caption of the camera choices</extracomment>
        <translation>Câmera</translation>
    </message>
    <message>
        <source>전방 카메라</source>
        <extracomment>Video export: the front camera alone, copied without loss</extracomment>
        <translation>Câmera dianteira</translation>
    </message>
    <message>
        <source>후방 카메라</source>
        <extracomment>Video export: the rear camera alone, copied without loss</extracomment>
        <translation>Câmera traseira</translation>
    </message>
    <message>
        <source>나란히 (전방 | 후방)</source>
        <extracomment>Video export: both cameras, front left and rear right</extracomment>
        <translation>Lado a lado (dianteira | traseira)</translation>
    </message>
    <message>
        <source>화면 속 화면 (후방 삽입)</source>
        <extracomment>Video export: the rear camera inset in the front camera's picture</extracomment>
        <translation>Imagem na imagem (traseira inserida)</translation>
    </message>
    <message>
        <source>시각, 속도, G 값 표시</source>
        <extracomment>Video export: check box that draws the telemetry on the picture</extracomment>
        <translation>Mostrar hora, velocidade e valores G na imagem</translation>
    </message>
    <message>
        <source>내보내기…</source>
        <extracomment>Video export: button that asks for the file and starts</extracomment>
        <translation>Exportar…</translation>
    </message>
    <message>
        <source>MP4 동영상 (*.mp4)</source>
        <extracomment>Save dialog file type</extracomment>
        <translation>Vídeo MP4 (*.mp4)</translation>
    </message>
    <message>
        <source>동영상을 내보내는 중…</source>
        <extracomment>Video export: above the progress bar</extracomment>
        <translation>Exportando o vídeo…</translation>
    </message>
    <message>
        <source>동영상을 저장했습니다:
%1</source>
        <extracomment>Message at the end of a video export, %1 the file</extracomment>
        <translation>O vídeo foi salvo:
%1</translation>
    </message>
    <message>
        <source>저장 폴더 열기</source>
        <extracomment>Button of the message: shows the folder of the saved video</extracomment>
        <translation>Abrir pasta</translation>
    </message>
    <message>
        <source>이 범위에는 해당 카메라의 녹화가 없습니다.</source>
        <extracomment>Message: no clip of the chosen camera covers the range</extracomment>
        <translation>Esta câmera não gravou nada neste intervalo.</translation>
    </message>
    <message>
        <source>이 폴더에 동영상을 저장할 수 없습니다.</source>
        <extracomment>Message: the chosen folder cannot take the file</extracomment>
        <translation>Não é possível salvar o vídeo nesta pasta. Escolha outra pasta.</translation>
    </message>
    <message>
        <source>동영상을 내보낼 수 없습니다.</source>
        <extracomment>Message: ffmpeg failed; the details follow</extracomment>
        <translation>Não foi possível exportar o vídeo.</translation>
    </message>
</context>
</TS>
