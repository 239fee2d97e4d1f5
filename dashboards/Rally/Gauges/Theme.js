.pragma library

// Hi-vis on black in one heavy typeface: a shaking display must be large and high in contrast.

// Text, from values down to what is off or unknown.
var ink = "#ffffff"
var muted = "#b9bdb4"
var faint = "#74786f"
var ghost = "#23251f"

// Surfaces.
var faceTop = "#1b1d18"
var faceMiddle = "#151713"
var faceBottom = "#10120e"
var metal = "#3b3e35"
var metalDark = "#151713"
var night = "#040404"
var bezelBright = "#8f9388"
var bezelDark = "#2c2f28"
var bezelEdge = "#000000"

// Meanings.
var accent = "#e4f222"
var good = "#22d86b"
var caution = "#ffb000"
var danger = "#ff3b30"
var flash = "#2fc4ff"
var cold = "#4ea3ff"

// Session flags, and text on bright surfaces.
var black = "#050505"
var white = "#ffffff"
var yellow = "#ffd21a"
var blue = "#1f5fe0"
var blueRim = "#5c8ff5"
var inkOnBright = "#0a0b06"

var labelSize = 16
var fontFamily = "Bebas Neue"
// There is no regular weight: nothing here is fine print.
var fontFiles = ["fonts/BebasNeue-Bold.otf", "fonts/BebasNeue-Bold.otf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
