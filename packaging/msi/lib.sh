# Helpers of the scripts in this folder; to be sourced.

# The version in a file's version resource, "1.2.3.4"; nothing when it has none.
file_version() {
  perl -0777 -ne 'if (/\xBD\x04\xEF\xFE.{4}(.{8})/s) {
    my ($minor, $major, $build, $patch) = unpack("v4", $1); print "$major.$minor.$patch.$build"; }' "$1"
}

# An identifier that is made from a text, so that the same text always gives the same one.
name_id() {
  printf '%s' "$1" | sha256sum |
    sed -E 's/^(.{8})(.{4}).(.{3}).(.{3})(.{12}).*/\1-\2-5\3-8\4-\5/' | tr a-f A-F
}

# The part of the registry where software stands, as Wine has it: "key|name|value" a line, in the
# order of the alphabet. A key without values is a line, too.
registry_lines() {
  local root file
  file=$(mktemp --suffix=.reg)
  for root in HKEY_LOCAL_MACHINE HKEY_CURRENT_USER; do
    wine regedit /E "$(winepath -w "$file" 2>/dev/null)" "$root\\Software" </dev/null >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$file"
  done | perl -ne '
    s/\r?\n$//;
    if (/^\[(.*)\]$/) { $key = $1; $key =~ s/\\Typelib(\\|$)/\\TypeLib$1/; print "$key||\n"; }
    elsif (/^(@|".*?[^\\]")=(.*)$/) {
      my ($name, $value) = ($1, $2);
      $name =~ s/^"|"$//g; $name = "" if $name eq "@";
      if ($value =~ s/^"(.*)"$/$1/) { $value =~ s/\\(.)/$1/g; }
      elsif ($value =~ /^dword:(.*)/) { $value = "#" . hex $1; }
      print "$key|$name|$value\n"; }' | LC_ALL=C sort -u
  rm -f "$file"
}

# registry_news BEFORE AFTER: the lines of a file of such lines that another has not, but for keys that
# only hold other keys.
registry_news() {
  LC_ALL=C comm -13 "$1" "$2" | perl -e '
    my @lines = <>;
    my %filled;
    for (@lines) {
      my ($key) = /^([^|]*)/;
      $filled{$key} = 1 unless /\|\|$/;
      $filled{$key} = 1 while $key =~ s/\\[^\\]*$//;
    }
    for (@lines) { print unless /^(.*)\|\|$/ && $filled{$1}; }'
}
