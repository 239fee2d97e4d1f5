.pragma library

// Loud colours on black, as on a touring car's display; the shared palette has the same names.

// Text, from values down to what is off or unknown.
var ink = "#ffffff"
var muted = "#a7adb3"
var faint = "#6f767d"
var ghost = "#25292e"

// Surfaces.
var faceTop = "#1a1d21"
var faceMiddle = "#131518"
var faceBottom = "#0c0e10"
var metal = "#3a4046"
var metalDark = "#15181b"
var night = "#000000"
var bezelBright = "#8d969f"
var bezelDark = "#2b3138"
var bezelEdge = "#040506"

// Meanings.
var accent = "#d6ff3d"
var good = "#2fe06f"
var caution = "#ffb300"
var danger = "#ff3040"
var flash = "#2f8dff"
var cold = "#3fa9ff"

// Session flags, and text on bright surfaces.
var black = "#000000"
var white = "#ffffff"
var yellow = "#ffde00"
var blue = "#1f62f0"
var blueRim = "#78a5ff"
var inkOnBright = "#08090a"

// Only in this dashboard: the settings that the driver turns.
var traction = "#35b6ff"
var antilock = "#ffc21f"
var bias = "#ff5fd2"
var limiter = "#d6ff3d"
var bestLap = "#cf8bff"

var labelSize = 11
var fontFamily = "Roboto Condensed"
var fontFiles = ["fonts/RobotoCondensed-Regular.ttf", "fonts/RobotoCondensed-Bold.ttf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
