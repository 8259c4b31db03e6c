<!DOCTYPE html>
<html><head><meta charset="utf-8"><title>{{ $title }}</title></head>
<body>
<h1>Hello {{ $name }}!</h1>
<p>You have <a href="{!! $url !!}">{!! $orders !!} open orders</a>. We write to you as soon as a parcel leaves our house.</p>
<p class="greeting">Yours sincerely, {{ $shop }}</p>
</body></html>
