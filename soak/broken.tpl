<ul>{dynamic row,rows}<li>{row::*::name}</li>{/optional}</ul>
