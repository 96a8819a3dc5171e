<CsoundSynthesizer>
; The five sounds of Orvane Utilities, one at a run, by the macro SOUND; make_sounds.sh makes them all.
;
; All share one key, D: the theme climbs out of D dorian into D major, its answer and the farewell end on the
; same chord, and the chant is that chord sung. So whichever sound cuts off whichever other, nothing clashes.
<CsInstruments>
sr = 22050
ksmps = 1
nchnls = 1
0dbfs = 1
seed 717355021

gaDry init 0
giBeat init 0.56  ; in seconds
giSine ftgen 0, 0, 8192, 10, 1
giRise ftgen 0, 0, 1024, 19, 0.5, 0.5, 270, 0.5

; Sections of like instruments: the lead horns, horns, celli and basses. Players, level, peak of the body in
; hertz and decibels, brightness in hertz, attack, level that a held note sinks to and how fast, release, how
; much a note ends early so that a repeated one is heard again (all in seconds), cents below the pitch at the
; start, cents of vibrato.
giLead  ftgen 1, 0, -12, -2, 4, 0.44, 820, 6, 5200, 0.030, 0.72, 0.50, 0.10, 0.055, 22, 5
giHorns ftgen 2, 0, -12, -2, 3, 0.21, 430, 4, 3200, 0.035, 0.75, 0.60, 0.11, 0.050, 18, 4
giCelli ftgen 3, 0, -12, -2, 6, 0.19, 300, 4, 3000, 0.045, 0.70, 0.35, 0.12, 0.050, 4, 7
giBass  ftgen 4, 0, -12, -2, 4, 0.22, 160, 4, 1200, 0.060, 0.80, 0.70, 0.16, 0.045, 3, 4

; Throats that sing "ah", the higher voices having the shorter one: for each resonance hertz, decibels, width.
giLow   ftgen 5, 0, -12, -2, 220, -3, 90, 600, 0, 70, 1040, -9, 80, 2450, -24, 120
giHigh  ftgen 6, 0, -12, -2, 330, -3, 90, 660, 0, 70, 1120, -9, 90, 2750, -26, 140

; What is struck: for each way to swing the ratio to the note, a level, a time to fall to a third. The tuned
; ways of a kettle stand close to 2 : 3 : 4 : 5, which is why a drum can have a pitch at all.
giKettle ftgen 0, 0, -18, -2, 1, 1, 0.42, 1.498, 0.55, 0.36, 1.985, 0.32, 0.26, 2.44, 0.16, 0.18, \
                              2.93, 0.09, 0.12, 0.62, 0.30, 0.06
giBone   ftgen 0, 0, -18, -2, 1, 1, 0.0085, 0.53, 0.55, 0.011, 1.71, 0.62, 0.0055, 2.46, 0.30, 0.0036, \
                              3.31, 0.12, 0.0024, 1, 0, 0.01

; Falls to a third within so many seconds, again and again.
opcode Fall, a, i
  iSeconds xin
  xout expon:a(1, iSeconds, 1 / 3)
endop

opcode Swings, a, iki
  iThing, kHz, iWay xin
  aSum = oscili(table(3 * iWay + 1, iThing), kHz * table(3 * iWay, iThing), giSine)
  aSum *= Fall(table(3 * iWay + 2, iThing))
  if iWay < 5 then
    aSum += Swings(iThing, kHz, iWay + 1)
  endif
  xout aSum
endop

opcode Throat, a, kkii
  kHz, kOpen, iThroat, iResonance xin
  kOver = kOpen * table(3 * iResonance, iThroat)
  aSum = fof(ampdb(table(3 * iResonance + 1, iThroat)), kHz, kOver, 0, table(3 * iResonance + 2, iThroat), \
             0.003, 0.02, 0.007, 20, giSine, giRise, 10)
  if iResonance < 3 then
    aSum += Throat(kHz, kOpen, iThroat, iResonance + 1)
  endif
  xout aSum
endop

; A vibrato that comes once the note is found, and the way up to the note; in cents.
opcode Cents, k, iii
  iVibrato, iScoop, iRate xin
  kSwing = oscil:k(iVibrato, random(iRate - 0.4, iRate + 0.4), giSine, random(0, 1))
  xout kSwing * cosseg:k(0, 0.15, 0, 0.35, 1, 1, 1) - iScoop * expon:k(1, 0.03, 1 / 3)
endop

; p4 pitch, p5 force, p6 section
instr Section
  iTurn = random(0, 1)
  iPlayer = 0
  while iPlayer < table(0, p6) do
    iLate = random(0, 0.014)
    schedule "Player", iLate, p3, p4, p5, p6, iTurn + iLate * cpspch(p4)
    iPlayer += 1
  od
endin

; Gets brighter when louder, and wanders about the others in phase, not in pitch: players who are a little out
; of tune would cancel each other and return. p7 is the turn at which all of the section are.
instr Player
  iIs[] tab2array p6
  iAttack = iIs[5]
  iRelease = iIs[8]
  iHeld = max(p3 - iIs[9], iAttack + 0.01)
  p3 = iHeld + iRelease
  aLevel = cosseg:a(0, iAttack, 1, iHeld - iAttack, 1, iRelease, 0) * (iIs[6] + (1 - iIs[6]) * Fall(iIs[7]))
  kTurn = p7 + jitter(0.13, 0.5, 2)
  aTone = vco2(1, cpspch(p4) * cent(Cents(iIs[11], iIs[10], 5)), 16, 0, kTurn - floor(kTurn))
  aTone = rbjeq(aTone, iIs[2], ampdb(iIs[3]), 0.8, 1, 8)
  aTone = butterlp(butterlp(aTone, 300 + iIs[4] * p5 * k(aLevel)), 5000)
  gaDry += aTone * aLevel * p5 * iIs[1] / sqrt(iIs[0])
endin

; p4 pitch, p5 force. A felt stick is slow, and the skin starts a little sharp.
instr Kettle
  aThump = butterlp(rand:a(0.9, 0.3), 240) * Fall(0.03)
  aSwing = Swings(giKettle, cpspch(p4) * cent(25 * expon:k(1, 0.06, 1 / 3)), 0)
  gaDry += (aSwing + aThump) * cosseg:a(0, 0.006, 1, 1, 1) * p5 * 0.3
endin

; p4 pitch. A short bar of bone on wood.
instr Knock
  aThump = butterlp(rand:a(0.45, 0.7), 2600) * Fall(0.0022)
  gaDry += (Swings(giBone, k(cpspch(p4)), 0) + aThump) * cosseg:a(0, 0.0012, 1, 1, 1)
endin

; p4 pitch, p5 force, p6 cents off the keyboard's pitch, p7 throat
instr Choir
  iSinger = 0
  while iSinger < 6 do
    schedule "Singer", random(0, 0.024), p3 + 0.48, p4, p5, p6, p7
    iSinger += 1
  od
endin

; No two heads are alike, and a mouth that stood open from the start would sound switched on.
instr Singer
  aLevel = cosseg:a(0, 0.12, 1, p3 - 0.6, 0.8, 0.48, 0)
  kOpen = random(0.96, 1.04) * cosseg:k(0.72, 0.2, 1, 1, 1)
  kHz = cpspch(p4) * cent(p6 + jitter(4, 0.5, 2) + Cents(11, 20, 5.2))
  gaDry += Throat(kHz, kOpen, p7, 0) * aLevel * p5 * 0.05
endin

; All that sounds, in a room: p3 the length of the piece, p4 gain in decibels, p5 seconds of fading out, p6
; share of the room. Takes away what no small speaker should get and brings both ends to zero.
instr Room
  event_i "e", 0, p3
  aWet, aOther reverbsc gaDry, gaDry, 0.78, 4500
  aAll = butterlp(butterlp(butterhp(gaDry + p6 * aWet, 40), 5200), 5200)
  out aAll * ampdb(p4) * cosseg:a(0, 0.0008, 1, p3 - p5 - 0.0128, 1, p5, 0, 0.012, 0)
  gaDry = 0
endin
; A line of a section, in threes: length in beats, pitch as octave and semitone (8.00 is the C in the middle)
; and force. Each note follows the one before.
opcode Play, 0, ii[]
  iSection, iLine[] xin
  iStart = 0
  iNote = 0
  while iNote < lenarray(iLine) do
    schedule "Section", iStart * giBeat, iLine[iNote] * giBeat, iLine[iNote + 1], iLine[iNote + 2], iSection
    iStart += iLine[iNote]
    iNote += 3
  od
endop

; The lead is the section that plays the tune. The kettle's strokes are threes of beat, pitch and force.
opcode Band, 0, ii[]i[]i[]i[]i[]i[]
  iLead, iTune[], iAlto[], iTenor[], iCelli[], iBass[], iKettle[] xin
  Play iLead, iTune
  Play 2, iAlto
  Play 2, iTenor
  Play 3, iCelli
  Play 4, iBass
  iStroke = 0
  while iStroke < lenarray(iKettle) do
    schedule "Kettle", iKettle[iStroke] * giBeat, 2.2, iKettle[iStroke + 1], iKettle[iStroke + 2]
    iStroke += 3
  od
endop

; Dm, F, G, C over E, D: the motif, a dotted call on one note and a climb, meets a second dotted call
; a seventh higher that steps up to the tonic. Into the last chord the bass goes against the tune.
instr Theme
  giBeat = 0.56
  iTune[] fillarray 0.75, 8.02, 0.96, 0.25, 8.02, 0.84, 0.5, 8.05, 0.84, 0.5, 8.07, 0.8, 1.5, 8.09, 0.9, \
                    0.5, 8.07, 0.76, 1, 8.11, 0.88, 0.75, 9.00, 0.9, 0.25, 9.00, 0.76, 2.3, 9.02, 0.96
  iAlto[] fillarray 0.75, 7.09, 0.92, 0.25, 7.09, 0.8, 1, 8.02, 0.7, 2, 8.00, 0.78, 1, 8.07, 0.76, \
                    0.75, 8.07, 0.78, 0.25, 8.07, 0.66, 2.3, 8.06, 0.84
  iTenor[] fillarray 0.75, 7.02, 0.92, 0.25, 7.02, 0.8, 1, 7.09, 0.7, 2, 7.09, 0.78, 1, 8.02, 0.76, \
                     0.75, 8.00, 0.78, 0.25, 8.00, 0.66, 2.3, 7.09, 0.84
  iCelli[] fillarray 0.5, 7.02, 0.75, 0.5, 7.02, 0.6, 0.5, 7.02, 0.68, 0.5, 7.02, 0.6, 0.5, 7.05, 0.78, \
                     0.5, 7.05, 0.62, 0.5, 7.05, 0.68, 0.5, 7.05, 0.62, 0.5, 7.07, 0.78, 0.5, 7.07, 0.66, \
                     0.5, 7.04, 0.8, 0.5, 7.04, 0.72, 2.3, 7.02, 0.88
  iBass[] fillarray 2, 6.02, 0.75, 2, 6.05, 0.75, 1, 6.07, 0.78, 1, 6.04, 0.8, 2.3, 6.02, 0.88
  iKettle[] fillarray 0, 6.02, 0.85, 0.75, 6.02, 0.4, 1, 6.02, 0.6, 2, 6.09, 0.75, 3.5, 6.09, 0.45, \
                      4, 6.02, 0.7, 5, 6.09, 0.4, 5.25, 6.09, 0.32, 5.5, 6.09, 0.42, 5.75, 6.09, 0.55, \
                      6, 6.02, 1
  Band 1, iTune, iAlto, iTenor, iCelli, iBass, iKettle
  schedule "Room", 0, 5.75, -15.8, 0.7, 0.5
endin

; The answer: the same dotted call from the top, and the climb turned upside down. Dm, C over E, D.
instr Theme2
  giBeat = 0.56
  iTune[] fillarray 0.75, 8.09, 0.86, 0.25, 8.09, 0.72, 0.5, 8.07, 0.84, 0.5, 8.04, 0.8, 1.85, 8.06, 0.92
  iAlto[] fillarray 0.75, 8.05, 0.74, 0.25, 8.05, 0.62, 1, 8.00, 0.76, 1.85, 8.02, 0.8
  iTenor[] fillarray 0.75, 8.02, 0.74, 0.25, 8.02, 0.62, 1, 7.07, 0.76, 1.85, 7.09, 0.8
  iCelli[] fillarray 0.5, 7.02, 0.78, 0.5, 7.02, 0.64, 0.5, 7.04, 0.78, 0.5, 7.04, 0.68, 1.85, 7.02, 0.84
  iBass[] fillarray 1, 6.02, 0.76, 1, 6.04, 0.78, 1.85, 6.02, 0.84
  iKettle[] fillarray 0, 6.02, 0.75, 1.5, 6.09, 0.4, 1.75, 6.09, 0.5, 2, 6.02, 0.85
  Band 1, iTune, iAlto, iTenor, iCelli, iBass, iKettle
  schedule "Room", 0, 2.95, -14.5, 0.6, 0.5
endin

; The farewell: the minor chord on G, broken downwards, sinks into the tonic. Soft throughout, since it
; also says "no" to a refused step.
instr Quit
  giBeat = 0.165
  iTune[] fillarray 1, 9.02, 0.62, 1, 8.10, 0.6, 1, 8.07, 0.6, 3.2, 8.06, 0.64
  iAlto[] fillarray 3, 8.02, 0.5, 3.2, 8.02, 0.56
  iTenor[] fillarray 3, 7.10, 0.52, 3.2, 7.09, 0.56
  iCelli[] fillarray 3, 7.07, 0.54, 3.2, 7.02, 0.58
  iBass[] fillarray 3, 6.07, 0.48, 3.2, 6.02, 0.52
  iKettle[] fillarray 3, 6.02, 0.35
  Band 2, iTune, iAlto, iTenor, iCelli, iBass, iKettle
  schedule "Room", 0, 1.48, -7.9, 0.4, 0.5
endin

; The voices come in from below, a breath apart, and as choirs do, they sing third and fifth pure.
instr Chant
  schedule "Choir", 0, 0.62, 7.02, 0.85, 0, giLow
  schedule "Choir", 0.015, 0.62, 7.09, 0.9, 2, giLow
  schedule "Choir", 0.03, 0.62, 8.02, 0.72, 0, giHigh
  schedule "Choir", 0.045, 0.62, 8.06, 0.6, -13.7, giHigh
  schedule "Room", 0, 1.5, 0, 0.4, 0.5
endin

; The D that the others stand on, high up.
instr Click
  schedule "Knock", 0, 0.09, 10.02
  schedule "Room", 0, 0.09, -9.7, 0.03, 0
endin

schedule "$SOUND", 0, 1
</CsInstruments>
<CsScore>
e 10
</CsScore>
</CsoundSynthesizer>
