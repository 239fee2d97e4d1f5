.pragma library

// Ink on a recorder's chart paper.

// Text, from values down to what is off or unknown.
var ink = "#18212b"
var muted = "#58626c"
var faint = "#9a9c98"
var ghost = "#d9d5c8"

// Surfaces.
var faceTop = "#fbf9f3"
var faceMiddle = "#f7f4ec"
var faceBottom = "#f1eee4"
var metal = "#b9b6aa"
var metalDark = "#8d8b82"
var night = "#e6e2d6"
var bezelBright = "#ffffff"
var bezelDark = "#a5a297"
var bezelEdge = "#55554f"
var paper = "#f4f1e8"
var chart = "#fdfcf8"
var grid = "#cfdfd9"

// Meanings.
var accent = "#dd4f12"
var good = "#0c8f4a"
var caution = "#e09a00"
var danger = "#d1202b"
var flash = "#2b7fe0"
var cold = "#2f77c9"

// Channels of the recorder.
var throttle = "#0c8f4a"
var brake = "#d1202b"
var clutch = "#2f77c9"
var steering = "#8447b5"

// Session flags, and text on bright surfaces.
var black = "#050505"
var white = "#ffffff"
var yellow = "#ffd21a"
var blue = "#1f5fe0"
var blueRim = "#143f96"
var inkOnBright = "#101010"

var labelSize = 11
var fontFamily = "Roboto Condensed"
var fontFiles = ["fonts/RobotoCondensed-Regular.ttf", "fonts/RobotoCondensed-Bold.ttf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
