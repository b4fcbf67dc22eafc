# The recipes of the documents' pictures, for scripts/docs. Every one ends in a sheet of pictures made by the
# tool. They run in a folder of their own, with $tool and $spoil set, and leave NAME.png in $sheets.

# sheet_of WIDTH NAME COLUMNS CAPTIONS PICTURE...: how wide the sheet is, how many pictures each row has, and
# captions with commas between. With 64 colours a sheet takes a quarter of the bytes.
sheet_of() {
  local width="$1" name="$2" columns="$3" captions="$4"
  shift 4
  "$tool" sheet "$@" --columns "$columns" --captions "$captions" --width "$width" --output sheet.png
  pngquant --speed 1 --nofs --output "$sheets/$name.png" 64 sheet.png
}
sheet() { sheet_of 640 "$@"; }

# flat PICTURE MOUNT VIEW OPTION...: makes PICTURE of the room that a camera of this mount sees.
flat() { "$tool" dewarp "$2.png" "$1" --mount "$2" --view "$3" "${@:4}"; }
# marked PICTURE MOUNT VIEW OPTION...: draws on that room what the view shows of it.
marked() { "$tool" outline "$2.png" "$1" --mount "$2" --view "$3" "${@:4}"; }

# Where the virtual camera of each mount looks: pan and tilt.
looks='ceiling 45 53
table 225 -52
wall 35 0'

draw_rooms() {
  local mount
  for mount in ceiling table wall; do
    "$tool" scene "$mount.png" --mount "$mount"
  done
  sheet mounts 3 'ceiling,table,wall' ceiling.png table.png wall.png
}

draw_beginning() {
  flat panorama.png ceiling full --inner-radius 0.2
  sheet first-panorama 1 'what the camera sees,its panorama' ceiling.png panorama.png
  marked clicked.png ceiling vcam --aim 0.75,0.3 --fov 60 --size 640x480
  flat there.png ceiling vcam --aim 0.75,0.3 --fov 60 --size 640x480
  sheet clicked 2 'what is shown,the view' clicked.png there.png
}

# What the README begins with.
draw_summary() {
  local mount pan tilt pictures=()
  while read -r mount pan tilt; do
    flat "$mount-vcam.png" "$mount" vcam --pan "$pan" --tilt "$tilt" --zoom 4 --size 640x480
    pictures+=("$mount.png" "$mount-vcam.png")
    if [[ $mount == wall ]]; then
      flat wall-full.png wall full
      pictures+=(wall-full.png)
    else
      flat "$mount-full.png" "$mount" full --inner-radius 0.2
      flat "$mount-dual.png" "$mount" dual --inner-radius 0.2 --pan 30
      pictures+=("$mount-dual.png")
    fi
  done <<<"$looks"
  sheet_of 900 eight-views 3,3,3,2 "$(
    printf '%s,' 'ceiling camera' 'virtual camera' 'dual panorama' 'table camera' 'virtual camera' \
      'dual panorama' 'wall camera' 'virtual camera' 'full panorama' 'ceiling: full panorama'
  )table: full panorama" "${pictures[@]}" ceiling-full.png table-full.png
}

# The views of each mount.
draw_views() {
  local mount pan tilt
  while read -r mount pan tilt; do
    marked vcam-marked.png "$mount" vcam --pan "$pan" --tilt "$tilt" --zoom 4 --size 640x480
    flat vcam.png "$mount" vcam --pan "$pan" --tilt "$tilt" --zoom 4 --size 640x480
    flat full.png "$mount" full
    if [[ $mount == wall ]]; then
      marked ring.png wall full
      sheet wall-views 2 'virtual camera: what is shown,virtual camera,panorama: what is shown,panorama' \
        vcam-marked.png vcam.png ring.png full.png
    else
      marked dual-marked.png "$mount" dual --inner-radius 0.2
      flat dual.png "$mount" dual --inner-radius 0.2
      flat full.png "$mount" full --inner-radius 0.2
      sheet "$mount-views" 2,2,1 \
        'virtual camera: what is shown,virtual camera,dual panorama: what is shown,dual panorama,full panorama' \
        vcam-marked.png vcam.png dual-marked.png dual.png full.png
    fi
  done <<<"$looks"
}

# draw_values NAME COLUMNS MOUNT VIEW OPTIONS...: one picture for each string of options, the first of which is
# its caption.
draw_values() {
  local name="$1" columns="$2" mount="$3" view="$4" options option value captions='' pictures=()
  shift 4
  for options; do
    read -r option value _ <<<"$options"
    captions+="${captions:+,}${option#--} $value"
    pictures+=("value${#pictures[@]}.png")
    # shellcheck disable=SC2086
    flat "${pictures[-1]}" "$mount" "$view" $options
  done
  sheet "$name" "$columns" "$captions" "${pictures[@]}"
}
# draw_marked_values: the same, and above the pictures, each in a row with its like, where they lie on the
# fisheye picture. COLUMNS are those below them.
draw_marked_values() {
  local name="$1" columns="$2" mount="$3" view="$4" options option value captions='' pictures=() outlines=()
  shift 4
  for options; do
    read -r option value _ <<<"$options"
    captions+=",${option#--} $value"
    pictures+=("value${#pictures[@]}.png")
    outlines+=("marked${#outlines[@]}.png")
    # shellcheck disable=SC2086
    flat "${pictures[-1]}" "$mount" "$view" $options
    # shellcheck disable=SC2086
    marked "${outlines[-1]}" "$mount" "$view" $options
  done
  sheet "$name" "$#,$columns" "${captions#,}$captions" "${outlines[@]}" "${pictures[@]}"
}

draw_turns() {
  local there='--zoom 4 --size 640x480'
  draw_values full-pan 1 ceiling full \
    '--pan 0 --inner-radius 0.2' '--pan 90 --inner-radius 0.2' '--pan 180 --inner-radius 0.2'
  draw_values dual-pan 3 ceiling dual \
    '--pan 0 --inner-radius 0.2' '--pan 45 --inner-radius 0.2' '--pan 90 --inner-radius 0.2'
  draw_marked_values vcam-pan 3 ceiling vcam \
    "--pan 0 --tilt 45 $there" "--pan 45 --tilt 45 $there" "--pan 90 --tilt 45 $there"
  draw_marked_values vcam-tilt 3 ceiling vcam "--tilt 0 $there" "--tilt 25 $there" "--tilt 50 $there"
  draw_marked_values wall-turn 3 wall vcam "--pan -40 $there" "--pan 40 $there" "--tilt 40 $there"
  draw_marked_values zoom-out 3 ceiling vcam '--zoom 1' '--zoom 1.5' '--zoom 2'
  draw_marked_values zoom-in 3 ceiling vcam \
    '--zoom 2 --pan 90 --tilt 45' '--zoom 4 --pan 90 --tilt 45' '--zoom 8 --pan 90 --tilt 45'
}

draw_lens_parameters() {
  local radius
  for radius in radius-x radius-y; do
    draw_marked_values "$radius" 1 ceiling full "--$radius 0.4 --inner-radius 0.2" \
      "--$radius 0.5 --inner-radius 0.2" "--$radius 0.6 --inner-radius 0.2"
  done
  local there='--pan 90 --tilt 45 --zoom 4 --size 640x480'
  draw_values radius-vcam 3 ceiling vcam "--radius-x 0.4 $there" "--radius-x 0.5 $there" "--radius-x 0.6 $there"
  draw_marked_values wall-view-angle 3 wall full \
    '--wall-view-angle 20' '--wall-view-angle 45' '--wall-view-angle 80'
  draw_marked_values inner-radius 1 ceiling full '--inner-radius 0' '--inner-radius 0.3' '--inner-radius 0.6'
}

draw_sizes() {
  draw_values size-full 1 ceiling full \
    '--size 2048x410 --inner-radius 0.2' '--size 1024x410 --inner-radius 0.2' \
    '--size 2048x205 --inner-radius 0.2'
  local there='--pan 45 --tilt 45 --zoom 4'
  draw_marked_values size-vcam 3 ceiling vcam \
    "--size 480x640 $there" "--size 640x480 $there" "--size 1024x480 $there"
  draw_values size-wall 2 wall full '--size 1024x724' '--size 1024x512'
}

# What comes of usual mistakes. Each sheet has what was meant, too.
draw_mistakes() {
  local full=(--view full --inner-radius 0.2) there=(--view vcam --pan 0 --zoom 3 --size 640x480)
  flat good-full.png ceiling "${full[@]:1}"
  flat good-vcam.png ceiling "${there[@]:1}" --tilt 45

  "$tool" dewarp ceiling.png bad-full.png --mount table "${full[@]}"
  "$tool" dewarp ceiling.png bad-vcam.png --mount table "${there[@]}" --tilt -45
  sheet wrong-mount 1,1,2 'ceiling: right,table: wrong,ceiling: right,table: wrong' \
    good-full.png bad-full.png good-vcam.png bad-vcam.png
  "$tool" dewarp ceiling.png bad-wall.png --mount wall --view full
  sheet wrong-wall 2 'a ceiling camera,its panorama as a wall camera' ceiling.png bad-wall.png

  "$spoil" flipped ceiling.png flipped.png
  "$tool" dewarp flipped.png bad-full.png --mount ceiling "${full[@]}"
  "$tool" dewarp flipped.png bad-vcam.png --mount ceiling "${there[@]}" --tilt 45
  sheet mirrored 1,2 'panorama,what the library was given,virtual camera' \
    bad-full.png flipped.png bad-vcam.png

  "$tool" scene narrow.png --mount ceiling --size 1000x1000
  "$spoil" padded narrow.png skewed.png
  "$tool" dewarp skewed.png bad-full.png --mount ceiling "${full[@]}"
  "$tool" dewarp skewed.png bad-vcam.png --mount ceiling "${there[@]}" --tilt 45
  sheet skewed 1,2 'panorama,what the library was given,virtual camera' \
    bad-full.png skewed.png bad-vcam.png

  "$tool" scene wide.png --mount ceiling --size 1280x720 --radius-x 0.28125
  "$tool" dewarp wide.png bad-full.png --mount ceiling "${full[@]}"
  "$tool" dewarp wide.png good-full.png --mount ceiling "${full[@]}" --radius-x 0.28125
  sheet wide-frame 1 'the frame,radius-x 0.5: wrong,radius-x 0.28125: right' \
    wide.png bad-full.png good-full.png

  marked corner-marked.png wall vcam --pan 35 --tilt 35 --zoom 3 --size 640x480
  flat corner.png wall vcam --pan 35 --tilt 35 --zoom 3 --size 640x480
  sheet black-corners 2 'what is shown,beyond the rim it is black' corner-marked.png corner.png
}

# The same view by FFmpeg, with the options that docs/from-v360-and-opencv.md explains.
draw_peers() {
  local lens=ih_fov=178.2:iv_fov=178.2 turn=rorder=rpy:roll=45:pitch=45 size=h_fov=86.07:v_fov=70:w=640:h=480
  flat ours.png ceiling vcam --pan 45 --tilt 45 --zoom 4 --size 640x480
  ffmpeg -nostdin -v error -y -i ceiling.png \
    -vf "format=gbrp,v360=input=fisheye:output=flat:interp=near:$lens:$turn:$size" theirs.png
  sheet v360 2 'libKivFisheye,v360' ours.png theirs.png
}

draw_pictures() {
  draw_rooms
  draw_summary
  draw_beginning
  draw_views
  draw_turns
  draw_lens_parameters
  draw_sizes
  draw_mistakes
  draw_peers
}
