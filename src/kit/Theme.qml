pragma Singleton

// Every colour, measure, type and duration of the screens. No other file holds a literal of these.
// Lengths are device-independent pixels, durations milliseconds.
import QtQuick

QtObject {
    // A kind of text: size, line and weight. `font` is ready to use; `lead` is half of what the line
    // is higher than the font, so that text stands in the middle of its line. What is higher is
    // reckoned from the family's own ascent and descent: asking would load every font at the start.
    component Type: QtObject {
        id: type

        required property int px
        required property int line
        property int weight: Font.Normal
        property string family: "Inter"
        readonly property font font: Qt.font({
            family: family,
            pixelSize: px,
            weight: weight,
            hintingPreference: Font.PreferNoHinting
        })
        readonly property real lead: (line - px * (family === "Inter" ? 1.2102 : 1.1641)) / 2
    }

    // Background levels, darkest to lightest.
    readonly property color pic: "#000000"
    readonly property color b1: "#131314"
    readonly property color b2: "#1A1A1C"
    readonly property color b3: "#222225"
    readonly property color b4: "#2C2C30"
    readonly property color b5: "#37373C"
    readonly property color b6: "#434349"

    // Text and lines.
    readonly property color t1: "#E3E3E6"
    readonly property color t2: "#A8A8B0"
    readonly property color tp: "#8E8E96"
    readonly property color t3: "#66666E"
    readonly property color line: "#2A2A2E"
    readonly property color line2: "#3D3D43"
    readonly property color edge: "#5A5A62"
    readonly property color edge2: "#8A8A92"

    // Meaning.
    readonly property color accent: "#84A4F7"
    readonly property color accentHover: "#9BB6FB"
    readonly property color accentPressed: "#6C8EE6"
    readonly property color accentText: "#0E1424"
    readonly property color ring: "#AFC5FF"
    readonly property color success: "#62BF88"
    readonly property color successText: "#0C1A12"
    readonly property color warning: "#E5A94E"
    readonly property color danger: "#F07A64"
    readonly property color dangerText: "#2A0D07"
    readonly property color star: "#EFC353"
    readonly property color fav: "#F2637F"
    readonly property color sel: Qt.alpha(accent, 0.18)
    readonly property color hover: Qt.rgba(1, 1, 1, 0.05)
    readonly property color chipOn: "#2F3A57"
    readonly property color chipOnBorder: "#5B71AB"
    readonly property color chipOnText: "#C4D3FF"
    readonly property color bar: Qt.alpha(accent, 0.55)
    readonly property color barActive: accent
    readonly property color range: Qt.alpha(accent, 0.30)
    readonly property color stem: Qt.alpha(accent, 0.35)
    readonly property color blank: Qt.rgba(1, 1, 1, 0.06)
    readonly property color warnBg: "#2B251C"
    readonly property color scrim: Qt.rgba(0, 0, 0, 0.62)
    readonly property color over: Qt.rgba(0, 0, 0, 0.58)
    readonly property color overGlyph: "#FFFFFF"
    readonly property color knob: "#FFFFFF"
    readonly property color nameInPlayer: "#FFFFFF"
    readonly property color knobHalo: "#56669A"
    readonly property color none: "transparent"

    readonly property color flagFavorite: "#42232C"
    readonly property color flagFavoriteBorder: "#8F4558"
    readonly property color flagSelected: "#203A2C"
    readonly property color flagSelectedBorder: "#417A59"
    readonly property color flagReviewed: "#3B3B41"
    readonly property color flagReviewedBorder: "#77777F"
    readonly property color flagRejected: "#42261F"
    readonly property color flagRejectedBorder: "#95523F"

    readonly property real rejectedOpacity: 0.4
    readonly property real generatingOpacity: 0.6
    readonly property real halfStarOpacity: 0.5

    // Spacing.
    readonly property int s2: 2
    readonly property int s4: 4
    readonly property int s6: 6
    readonly property int s8: 8
    readonly property int s12: 12
    readonly property int s16: 16
    readonly property int s24: 24
    readonly property int s32: 32
    readonly property int s48: 48
    readonly property int regionPadding: 12
    readonly property int sheetPadding: 24
    readonly property int buttonGap: 8
    readonly property int chipGap: 6

    // Radii. A chip's is half its height.
    readonly property int badgeRadius: 3
    readonly property int thumbnailRadius: 3
    readonly property int menuRowRadius: 4
    readonly property int controlRadius: 6
    readonly property int panelRadius: 8
    readonly property int sheetRadius: 12

    // Icons.
    readonly property int iconMark: 12
    readonly property int iconCheck: 14
    readonly property int iconButton: 16
    readonly property int icon: 18
    readonly property int iconBrand: 20
    readonly property int iconTransport: 22
    readonly property int iconPlay: 24
    readonly property int iconOver: 32
    readonly property int overButton: 56

    // Types.
    readonly property Type badge: Type { px: 9; line: 14; weight: Font.Bold }
    readonly property Type micro: Type { px: 10; line: 14 }
    readonly property Type small: Type { px: 11; line: 15 }
    readonly property Type smallStrong: Type { px: 11; line: 15; weight: Font.DemiBold }
    readonly property Type smallBold: Type { px: 11; line: 15; weight: Font.Bold }
    readonly property Type list: Type { px: 12; line: 16 }
    readonly property Type listName: Type { px: 12; line: 16; weight: Font.Medium }
    readonly property Type listHead: Type { px: 12; line: 16; weight: Font.DemiBold }
    readonly property Type body: Type { px: 13; line: 18 }
    readonly property Type bodyLabel: Type { px: 13; line: 18; weight: Font.Medium }
    readonly property Type bodyStrong: Type { px: 13; line: 18; weight: Font.DemiBold }
    readonly property Type head: Type { px: 15; line: 20; weight: Font.DemiBold }
    readonly property Type headPlain: Type { px: 15; line: 20 }
    readonly property Type title: Type { px: 20; line: 26; weight: Font.DemiBold }
    readonly property Type name: Type { px: 32; line: 40; weight: Font.DemiBold }
    readonly property Type preview: Type { px: 12; line: 19; family: "DejaVu Sans Mono" }

    // Heights and sizes.
    readonly property int menuBarHeight: 26
    readonly property int headerHeight: 44
    readonly property int filterRowHeight: 74
    readonly property int chipHeight: 24
    readonly property int smallButtonHeight: 24
    readonly property int controlHeight: 28
    readonly property int footButtonHeight: 32
    readonly property int checkSize: 16
    readonly property int checkRowHeight: 24
    readonly property int switchWidth: 28
    readonly property int switchHeight: 16
    readonly property int switchKnob: 12
    readonly property int listTopHeight: 34
    readonly property int clipRowHeight: 53
    readonly property int clipThumbWidth: 80
    readonly property int clipThumbHeight: 45
    readonly property int clipRowInset: 10
    readonly property int inlineRowInset: 24
    readonly property int flatRowHeight: 71
    readonly property int flatThumbWidth: 112
    readonly property int flatThumbHeight: 63
    readonly property int drawerHeadHeight: 30
    readonly property int drawerRowHeight: 44
    readonly property int drawerThumbWidth: 64
    readonly property int drawerThumbHeight: 36
    readonly property int keyReminderHeight: 26
    readonly property int scrubberHeight: 20
    readonly property int trackHeight: 4
    readonly property int knobSize: 12
    readonly property int bracketWidth: 3
    readonly property int bracketHeight: 16
    readonly property int filmstripHeight: 44
    readonly property int barsHeight: 12
    readonly property int barHeight: 6
    readonly property int transportHeight: 40
    readonly property int sheetHeadHeight: 52
    readonly property int sheetFootHeight: 56
    readonly property int previewRowHeight: 28
    readonly property int importRowHeight: 34
    readonly property int resultRowHeight: 32
    readonly property int recentRowHeight: 56
    readonly property int progressHeight: 6
    readonly property int scrollBarWidth: 4
    readonly property int scrollBarInset: 2
    readonly property int menuItemHeight: 26
    readonly property int menuMinWidth: 132
    readonly property int menuMaxWidth: 440
    readonly property int badgeHeight: 14
    readonly property int factHeight: 20
    readonly property int sButtonSize: 20
    readonly property int starWidth: 18
    readonly property int starClearWidth: 22
    readonly property int alertWidth: 440
    readonly property int rowBarWidth: 3
    readonly property int ringWidth: 2
    readonly property int ringGap: 2
    readonly property int hairline: 1

    // Screens: columns and sheets.
    readonly property int homeWidth: 720
    readonly property int homeTop: 104
    readonly property int recentOverhang: 10
    readonly property int setupWidth: 640
    readonly property int setupTop: 72
    readonly property int labelColumn: 128
    readonly property int fieldWidth: 360
    readonly property int formWidth: 496
    readonly property int areaHeight: 84
    readonly property int dateFieldWidth: 136

    readonly property int recentGlyphSize: 36
    readonly property int formGap: 14
    readonly property int layoutPreviewHeight: 96

    // The list and the inspector of the review.
    readonly property int sidePaneWidth: 220
    readonly property int sidePaneMinWidth: 160
    readonly property int sidePaneMaxWidth: 380
    readonly property int largeStarWidth: 22
    readonly property int largeStarClearWidth: 26
    readonly property int factRadius: 4
    readonly property int factPadding: 7
    readonly property int tagHeight: 22
    readonly property int tagPadding: 9
    readonly property int tagCrossWidth: 18
    readonly property int flagIcon: 15
    readonly property int flagGap: 5
    readonly property int sectionGap: 14
    readonly property int notesMinHeight: 66
    readonly property int notesMaxHeight: 112

    readonly property int sidePaneTight: 250
    readonly property int sidePaneNarrow: 200
    readonly property int narrowThumbWidth: 48
    readonly property int narrowThumbHeight: 27
    readonly property int rowPadding: 4
    readonly property int detailsHeight: 14
    readonly property int marksHeight: 15
    readonly property int ratingPlace: 27
    readonly property int ratingPlaceTight: 26
    readonly property int heartPlace: 16
    readonly property int badgePlace: 17
    readonly property int badgePlaceTight: 16
    readonly property int cardTop: 8
    readonly property int cardBottom: 10
    readonly property real cardShape: 16 / 9
    readonly property int stemX: 14
    readonly property int stemWidth: 2
    readonly property int tickSize: 16
    readonly property int tickInset: 3
    readonly property int noMatchesTop: 96
    readonly property int searchWidth: 276
    readonly property int infoButtonSize: 26

    // The player and what lies under it.
    readonly property int mainPaneMinWidth: 720
    readonly property int bracketFootWidth: 7
    readonly property int bracketFootHeight: 2
    readonly property int knobHaloWidth: 3
    readonly property int barRadius: 2
    readonly property int bannerHeight: 32
    readonly property int bannerDividerHeight: 14
    readonly property int transportButtonSize: 32
    readonly property int playButtonWidth: 40
    readonly property int transportTimeOffset: 72
    readonly property real drawerListShare: 0.147
    readonly property int drawerListMinHeight: 110
    readonly property int drawerListMaxHeight: 132
    readonly property int drawerRowGap: 10
    readonly property int drawerRangeWidth: 132
    readonly property int drawerLengthWidth: 62

    // Banners.
    readonly property int bannerMessageWidth: 960
    readonly property int bannerInset: 14
    readonly property int bannerListLines: 5

    // Sheets of runs.
    readonly property int compactSheetWidth: 560
    readonly property int compactHeadHeight: 58
    readonly property int compactBottom: 20
    readonly property int cancelWidth: 116

    // The import's sheets.
    readonly property int importSheetWidth: 880
    readonly property int importSheetHeight: 722
    readonly property int importSmallWidth: 640
    readonly property int importSourcesHeight: 440
    readonly property int importFailuresHeight: 280
    readonly property int importSummaryGap: 14
    readonly property int importModeLabel: 56
    readonly property int importColumnGap: 10
    readonly property int importSidecarColumn: 76
    readonly property int importBadgeColumn: 116
    readonly property int importSizeColumn: 84
    readonly property int importTagHeight: 18
    readonly property int importTagRadius: 4

    // The sheets of export and handoff.
    readonly property int deliverySheetWidth: 1080
    readonly property int exportSheetHeight: 800
    readonly property int handoffSheetHeight: 632
    readonly property int deliveryFormWidth: 658
    readonly property int deliveryTop: 18
    readonly property int deliveryHelpWidth: 456
    readonly property int packageNameWidth: 320
    readonly property int namingLabelWidth: 88
    readonly property int namingFieldWidth: 220
    readonly property int namingRowGap: 3
    readonly property int previewPadding: 20
    readonly property int resultSheetWidth: 760
    readonly property int resultSheetHeight: 728
    readonly property int resultSheetMargin: 64
    readonly property int resultTop: 22
    readonly property int resultGap: 14
    readonly property int resultCountPadding: 10
    readonly property int resultTextLead: 7

    // Windows.
    readonly property int windowWidth: 1440
    readonly property int windowHeight: 900
    readonly property int windowMinWidth: 960
    readonly property int windowMinHeight: 600
    readonly property int helpWidth: 820
    readonly property int helpHeight: 700
    readonly property int helpMinWidth: 760
    readonly property int helpMinHeight: 640

    // The user guide.
    readonly property Type helpHeading1: Type { px: 34; line: 42; weight: Font.Bold }
    readonly property Type helpHeading2: Type { px: 22; line: 28; weight: Font.DemiBold }
    readonly property Type helpHeading3: Type { px: 17; line: 23; weight: Font.DemiBold }
    readonly property Type helpBody: Type { px: 14; line: 20 }
    readonly property Type helpBullet: Type { px: 14; line: 20; weight: Font.Bold }
    readonly property int helpPadding: 40
    readonly property int helpGap: 8
    readonly property int helpRule1: 2
    readonly property int helpRule2: 1
    readonly property color helpRuleAccent: Qt.alpha(accent, 0.4)
    readonly property color helpRuleQuiet: Qt.rgba(1, 1, 1, 0.1)
    readonly property int helpLineStep: 60

    // Durations.
    readonly property int release: 90
    readonly property int popup: 90
    readonly property int sheet: 140
    readonly property int swap: 180
    readonly property int drawer: 180
    readonly property int helpTextDelay: 600
    readonly property int turn: 960
}
