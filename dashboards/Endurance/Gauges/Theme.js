.pragma library

// Dim embers: nothing is bright enough to spoil night vision, except a
// flag. The shared palette has the same names.

// Text, from values down to what is off or unknown.
var ink = "#e3bf8e"
var muted = "#a1805a"
var faint = "#6b553c"
var ghost = "#221a12"

// Surfaces.
var faceTop = "#120d08"
var faceMiddle = "#0d0906"
var faceBottom = "#090604"
var metal = "#3a2c1e"
var metalDark = "#150f0a"
var night = "#050302"
var bezelBright = "#7d6244"
var bezelDark = "#2b2017"
var bezelEdge = "#040302"

// Meanings.
var accent = "#d97a24"
var good = "#8d9f58"
var caution = "#d99a24"
var danger = "#d1402e"
var flash = "#d1402e"
var cold = "#5f87a8"

// Session flags, and text on bright surfaces.
var black = "#000000"
var white = "#e8dccb"
var yellow = "#d9b21a"
var blue = "#2a55b8"
var blueRim = "#5f84d6"
var inkOnBright = "#0b0704"

var labelSize = 11
var fontFamily = "Roboto Condensed"
var fontFiles = ["fonts/RobotoCondensed-Regular.ttf", "fonts/RobotoCondensed-Bold.ttf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
