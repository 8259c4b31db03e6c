<footer>
<ul>
@foreach ($links as $link)
<li><a href="{!! $link['url'] !!}">{{ $link['title'] }}</a></li>
@endforeach
</ul>
<p>Call us: {!! $phone !!}. Prices include taxes; shipping is free of charge from 50 EUR.</p>
<p>© {!! $year !!} {{ $shop }}</p>
</footer>
</body>
</html>
