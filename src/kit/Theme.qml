pragma Singleton

// The colors, sizes, text styles and durations of the screens. No other file contains a color.
// Lengths are in device-independent pixels, durations in milliseconds.
import QtQuick

QtObject {
    // A text style. `leading` is half of the difference between the line's height and the font's:
    // as padding it centers the text in its line. It is computed from the family's own ascent and
    // descent, because asking for font metrics would load every font at startup.
    component TextStyle: QtObject {
        required property int pixelSize
        required property int lineHeight
        property int weight: Font.Normal
        property string family: "Inter"
        readonly property font font: fontWithShaping(true)
        // Without the typeface's contextual forms, which turn "640x360" into "640×360".
        readonly property font literalFont: fontWithShaping(false)
        readonly property real leading: (lineHeight - pixelSize * (family === "Inter" ? 1.2102 : 1.1641)) / 2

        function fontWithShaping(preferShaping: bool): font {
            return Qt.font({
                family: family,
                pixelSize: pixelSize,
                weight: weight,
                hintingPreference: Font.PreferNoHinting,
                preferShaping: preferShaping
            });
        }
    }

    // Background levels, darkest to lightest.
    readonly property color playerBackground: "#000000"
    readonly property color windowBackground: "#131314" // also lists, the drawer
    readonly property color panelBackground: "#1A1A1C" // header, filter row, transport, sheets
    readonly property color popupBackground: "#222225" // alerts, menus, panels inside a sheet
    readonly property color controlBackground: "#2C2C30" // buttons, chips, facts
    readonly property color controlHovered: "#37373C"
    readonly property color controlPressed: "#434349"
    readonly property color controlDisabled: popupBackground
    readonly property color fieldBackground: windowBackground
    readonly property color track: controlPressed // of scrubbers, scroll bars, switches
    readonly property color neutralBadge: controlPressed

    // Text, dividers and borders.
    readonly property color primaryText: "#E3E3E6"
    readonly property color secondaryText: "#A8A8B0"
    readonly property color placeholderText: "#8E8E96"
    readonly property color disabledText: "#66666E"
    readonly property color textSelection: activeChipBorder
    readonly property color divider: "#2A2A2E"
    readonly property color panelBorder: "#3D3D43"
    readonly property color fieldBorder: "#5A5A62"
    readonly property color controlBorder: "#8A8A92"

    // Colors with a meaning.
    readonly property color accent: "#84A4F7"
    readonly property color accentHovered: "#9BB6FB"
    readonly property color accentPressed: "#6C8EE6"
    readonly property color accentText: "#0E1424"
    readonly property color focusRing: "#AFC5FF"
    readonly property color success: "#62BF88"
    readonly property color successText: "#0C1A12"
    readonly property color warning: "#E5A94E"
    readonly property color danger: "#F07A64"
    readonly property color dangerText: "#2A0D07"
    readonly property color rating: "#EFC353"
    readonly property color favorite: "#F2637F"
    readonly property color selectedRow: Qt.alpha(accent, 0.18)
    readonly property color hoveredRow: Qt.rgba(1, 1, 1, 0.05)
    readonly property color activeChipBackground: "#2F3A57"
    readonly property color activeChipBorder: "#5B71AB"
    readonly property color activeChipText: "#C4D3FF"
    readonly property color subclipBar: Qt.alpha(accent, 0.55)
    readonly property color activeSubclipBar: accent
    readonly property color markedRange: Qt.alpha(accent, 0.30)
    readonly property color subclipStem: Qt.alpha(accent, 0.35)
    readonly property color missingThumbnail: Qt.rgba(1, 1, 1, 0.06)
    readonly property color bannerBackground: "#2B251C"
    readonly property color scrim: Qt.rgba(0, 0, 0, 0.62)
    readonly property color overlayBackground: Qt.rgba(0, 0, 0, 0.58)
    readonly property color overlayGlyph: "#FFFFFF"
    readonly property color scrubberKnob: "#FFFFFF"
    readonly property color playerClipName: "#FFFFFF"
    readonly property color scrubberKnobHalo: "#56669A"
    readonly property color transparent: "transparent"

    readonly property color flagFavoriteBackground: "#42232C"
    readonly property color flagFavoriteBorder: "#8F4558"
    readonly property color flagSelectedBackground: "#203A2C"
    readonly property color flagSelectedBorder: "#417A59"
    readonly property color flagReviewedBackground: "#3B3B41"
    readonly property color flagReviewedBorder: "#77777F"
    readonly property color flagRejectedBackground: "#42261F"
    readonly property color flagRejectedBorder: "#95523F"

    readonly property real rejectedOpacity: 0.4
    readonly property real generatingOpacity: 0.6
    readonly property real previewedStarOpacity: 0.5

    // Spacing.
    readonly property int spacing2: 2
    readonly property int spacing4: 4
    readonly property int spacing6: 6
    readonly property int spacing8: 8
    readonly property int spacing12: 12
    readonly property int spacing16: 16
    readonly property int spacing24: 24
    readonly property int spacing32: 32
    readonly property int spacing48: 48
    readonly property int regionPadding: 12
    readonly property int sheetPadding: 24
    readonly property int buttonGap: 8
    readonly property int chipGap: 6

    // Corner radii. A chip's is half its height.
    readonly property int badgeRadius: 3
    readonly property int thumbnailRadius: 3
    readonly property int menuRowRadius: 4
    readonly property int controlRadius: 6
    readonly property int panelRadius: 8
    readonly property int sheetRadius: 12

    // Icon sizes.
    readonly property int markIconSize: 12
    readonly property int checkIconSize: 14
    readonly property int buttonIconSize: 16
    readonly property int iconSize: 18
    readonly property int brandIconSize: 20
    readonly property int transportIconSize: 22
    readonly property int playIconSize: 24
    readonly property int overlayIconSize: 32
    readonly property int audioIconSize: 96
    readonly property int overlayButtonSize: 56

    // Text styles.
    readonly property TextStyle badgeStyle: TextStyle {
        pixelSize: 9; lineHeight: 14; weight: Font.Bold
    }
    readonly property TextStyle microStyle: TextStyle { pixelSize: 10; lineHeight: 14 }
    readonly property TextStyle smallStyle: TextStyle { pixelSize: 11; lineHeight: 15 }
    readonly property TextStyle smallStrongStyle: TextStyle {
        pixelSize: 11; lineHeight: 15; weight: Font.DemiBold
    }
    readonly property TextStyle smallBoldStyle: TextStyle {
        pixelSize: 11; lineHeight: 15; weight: Font.Bold
    }
    readonly property TextStyle listStyle: TextStyle { pixelSize: 12; lineHeight: 16 }
    readonly property TextStyle listNameStyle: TextStyle {
        pixelSize: 12; lineHeight: 16; weight: Font.Medium
    }
    readonly property TextStyle listHeadingStyle: TextStyle {
        pixelSize: 12; lineHeight: 16; weight: Font.DemiBold
    }
    readonly property TextStyle bodyStyle: TextStyle { pixelSize: 13; lineHeight: 18 }
    readonly property TextStyle bodyLabelStyle: TextStyle {
        pixelSize: 13; lineHeight: 18; weight: Font.Medium
    }
    readonly property TextStyle bodyStrongStyle: TextStyle {
        pixelSize: 13; lineHeight: 18; weight: Font.DemiBold
    }
    readonly property TextStyle headingStyle: TextStyle {
        pixelSize: 15; lineHeight: 20; weight: Font.DemiBold
    }
    readonly property TextStyle headingPlainStyle: TextStyle { pixelSize: 15; lineHeight: 20 }
    readonly property TextStyle titleStyle: TextStyle {
        pixelSize: 20; lineHeight: 26; weight: Font.DemiBold
    }
    readonly property TextStyle productNameStyle: TextStyle {
        pixelSize: 32; lineHeight: 40; weight: Font.DemiBold
    }
    readonly property TextStyle layoutPreviewStyle: TextStyle {
        pixelSize: 12; lineHeight: 19; family: "DejaVu Sans Mono"
    }

    // Sizes of controls and rows.
    readonly property int menuBarHeight: 26
    readonly property int headerHeight: 44
    readonly property int filterRowHeight: 74
    readonly property int chipHeight: 24
    readonly property int smallButtonHeight: 24
    readonly property int controlHeight: 28
    readonly property int footerButtonHeight: 32
    readonly property int checkBoxSize: 16
    readonly property int checkBoxRowHeight: 24
    readonly property int switchWidth: 28
    readonly property int switchHeight: 16
    readonly property int switchKnob: 12
    readonly property int listHeaderHeight: 34
    readonly property int clipRowHeight: 53
    readonly property int clipThumbnailWidth: 80
    readonly property int clipThumbnailHeight: 45
    readonly property int clipRowInset: 10
    readonly property int inlineRowInset: 24
    readonly property int flatRowHeight: 71
    readonly property int flatThumbnailWidth: 112
    readonly property int flatThumbnailHeight: 63
    readonly property int drawerHeaderHeight: 30
    readonly property int drawerRowHeight: 44
    readonly property int drawerThumbnailWidth: 64
    readonly property int drawerThumbnailHeight: 36
    readonly property int keyReminderHeight: 26
    readonly property int scrubberHeight: 20
    readonly property int trackHeight: 4
    readonly property int scrubberKnobSize: 12
    readonly property int bracketWidth: 3
    readonly property int bracketHeight: 16
    readonly property int filmstripHeight: 44
    readonly property int subclipBarsHeight: 12
    readonly property int transportHeight: 40
    readonly property int sheetHeaderHeight: 52
    readonly property int sheetFooterHeight: 56
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
    readonly property int exportMarkSize: 20
    readonly property int starWidth: 18
    readonly property int starClearWidth: 22
    readonly property int alertWidth: 440
    readonly property int currentRowBarWidth: 3
    readonly property int focusRingWidth: 2
    readonly property int focusRingGap: 2
    readonly property int hairline: 1

    // Home and the setup form.
    readonly property int homeWidth: 720
    readonly property int homeTopMargin: 104
    readonly property int recentOverhang: 10
    readonly property int setupWidth: 640
    readonly property int setupTopMargin: 72
    readonly property int labelColumnWidth: 128
    readonly property int fieldWidth: 360
    readonly property int formWidth: 496
    readonly property int textAreaHeight: 84
    readonly property int dateFieldWidth: 136

    readonly property int recentGlyphSize: 36
    readonly property int formGap: 14
    readonly property int layoutPreviewHeight: 96

    // The side pane of the review.
    readonly property int sidePaneWidth: 220
    readonly property int sidePaneMinWidth: 160
    readonly property int sidePaneMaxWidth: 380
    readonly property int splitStep: 20
    readonly property int largeStarWidth: 22
    readonly property int largeStarClearWidth: 26
    readonly property int factRadius: 4
    readonly property int factPadding: 7
    readonly property int tagHeight: 22
    readonly property int tagPadding: 9
    readonly property int tagCrossWidth: 18
    readonly property int flagIconSize: 15
    readonly property int flagGap: 5
    readonly property int sectionGap: 14
    readonly property int notesMinHeight: 66
    readonly property int notesMaxHeight: 112

    readonly property int sidePaneTightWidth: 250
    readonly property int sidePaneNarrowWidth: 200
    readonly property int narrowThumbnailWidth: 48
    readonly property int narrowThumbnailHeight: 27
    readonly property int detailsHeight: 14
    readonly property int marksHeight: 15
    readonly property int ratingColumnWidth: 27
    readonly property int tightRatingColumnWidth: 26
    readonly property int heartColumnWidth: 16
    readonly property int badgeColumnWidth: 17
    readonly property int tightBadgeColumnWidth: 16
    readonly property int cardTopPadding: 8
    readonly property int cardBottomPadding: 10
    readonly property real cardAspectRatio: 16 / 9
    readonly property int subclipStemX: 14
    readonly property int subclipStemWidth: 2
    readonly property int tickSize: 16
    readonly property int tickInset: 3
    readonly property int noMatchesTopMargin: 96
    readonly property int searchFieldWidth: 276
    readonly property int infoButtonSize: 26

    // The main pane of the review.
    readonly property int mainPaneMinWidth: 720
    readonly property int bracketFootWidth: 7
    readonly property int bracketFootHeight: 2
    readonly property int scrubberKnobHaloWidth: 3
    readonly property int subclipBarRadius: 2
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

    // The compact sheet of a run.
    readonly property int compactSheetWidth: 560
    readonly property int compactHeaderHeight: 58
    readonly property int compactBottomPadding: 20
    readonly property int cancelButtonWidth: 116

    // The import sheet.
    readonly property int importSheetWidth: 880
    readonly property int importSheetHeight: 722
    readonly property int importSmallSheetWidth: 640
    readonly property int importSourcesHeight: 440
    readonly property int importFailuresHeight: 280
    readonly property int importSummaryGap: 14
    readonly property int importModeLabelWidth: 56
    readonly property int importColumnGap: 10
    readonly property int importSidecarColumnWidth: 76
    readonly property int importBadgeColumnWidth: 116
    readonly property int importSizeColumnWidth: 84
    readonly property int importTagHeight: 18
    readonly property int importTagRadius: 4

    // The export and handoff sheets.
    readonly property int deliverySheetWidth: 1080
    readonly property int exportSheetHeight: 800
    readonly property int handoffSheetHeight: 632
    readonly property int deliveryFormWidth: 658
    readonly property int deliveryTopMargin: 18
    readonly property int deliveryHelpWidth: 456
    readonly property int packageNameWidth: 320
    readonly property int namingLabelWidth: 88
    readonly property int namingFieldWidth: 220
    readonly property int namingRowGap: 3
    readonly property int previewPadding: 20
    readonly property int resultSheetWidth: 760
    readonly property int resultSheetHeight: 728
    readonly property int resultSheetMargin: 64
    readonly property int resultTopMargin: 22
    readonly property int resultGap: 14
    readonly property int resultCountPadding: 10
    readonly property int resultTextPadding: 7

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
    readonly property TextStyle helpHeading1Style: TextStyle {
        pixelSize: 34; lineHeight: 42; weight: Font.Bold
    }
    readonly property TextStyle helpHeading2Style: TextStyle {
        pixelSize: 22; lineHeight: 28; weight: Font.DemiBold
    }
    readonly property TextStyle helpHeading3Style: TextStyle {
        pixelSize: 17; lineHeight: 23; weight: Font.DemiBold
    }
    readonly property TextStyle helpBodyStyle: TextStyle { pixelSize: 14; lineHeight: 20 }
    readonly property TextStyle helpBulletStyle: TextStyle {
        pixelSize: 14; lineHeight: 20; weight: Font.Bold
    }
    readonly property int helpPadding: 40
    readonly property int helpGap: 8
    readonly property int heading1RuleHeight: 2
    readonly property int heading2RuleHeight: 1
    readonly property color heading1Rule: Qt.alpha(accent, 0.4)
    readonly property color heading2Rule: Qt.rgba(1, 1, 1, 0.1)
    readonly property int helpScrollStep: 60
    readonly property int helpScrollInterval: 50 // ms

    // Durations.
    readonly property int popupDuration: 90
    readonly property int sheetDuration: 140
    readonly property int paneSwapDuration: 180
    readonly property int drawerDuration: 180
    readonly property int helpTextDelay: 600
    readonly property int spinnerTurnDuration: 960
}
